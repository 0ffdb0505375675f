pragma ComponentBehavior: Bound
import QtQuick
import Larder

// A plate on a table cloth.
Rectangle {
    id: root

    required property Recipe recipe

    color: root.recipe.tint
    clip: true

    Repeater {
        model: 6

        Rectangle {
            required property int index

            x: index * root.width / 5 - width / 2
            width: root.width / 14
            height: root.height
            color: "white"
            opacity: 0.18
        }
    }
    Rectangle {
        id: plate
        anchors.centerIn: parent
        width: Math.min(root.width, root.height) * 0.82
        height: width
        radius: width / 2
        color: "#FBFAF7"

        Rectangle {
            id: food
            anchors.centerIn: parent
            width: parent.width * 0.7
            height: width
            radius: width / 2
            color: root.recipe.fill

            Repeater {
                model: 7

                Rectangle {
                    required property int index
                    readonly property real angle: index * 2 * Math.PI / 7 + root.recipe.minutes
                    readonly property real distance: food.width * (index % 2 ? 0.32 : 0.18)

                    x: food.width / 2 + Math.cos(angle) * distance - width / 2
                    y: food.height / 2 + Math.sin(angle) * distance - height / 2
                    width: food.width * 0.14
                    height: width * (index % 3 ? 1 : 0.6)
                    radius: height / 2
                    rotation: index * 40
                    color: index % 2 ? Qt.lighter(root.recipe.fill, 1.35) : Qt.darker(root.recipe.fill, 1.3)
                }
            }
        }
    }
}
