import QtQuick
import Zenvor.Screens

// A button of the top bar: a text and nothing else.
Tappable {
    id: root

    property font textFont: EditorTheme.buttonFont
    required property color color

    implicitWidth: label.implicitWidth
    implicitHeight: touchTarget

    Label {
        id: label
        anchors.fill: parent
        text: root.text
        font: root.textFont
        color: root.color
        opacity: root.down ? EditorTheme.pressedOpacity : 1
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
