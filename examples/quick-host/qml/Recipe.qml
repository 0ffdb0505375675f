import QtQuick

QtObject {
    required property string title
    required property string summary
    required property int minutes
    required property int servings
    required property color tint
    required property color fill
    required property list<string> ingredients
    required property list<string> steps
}
