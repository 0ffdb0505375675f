import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A word that can be tapped.
Tappable {
    id: root

    property color color: SystemColors.blue

    font: MediaTheme.action
    implicitWidth: label.implicitWidth + 2 * MediaTheme.actionPadding
    implicitHeight: MediaTheme.buttonSize
    focusRadius: MediaTheme.actionPadding

    Label {
        id: label
        anchors { fill: parent; leftMargin: MediaTheme.actionPadding; rightMargin: MediaTheme.actionPadding }
        text: root.text
        font: root.font
        color: root.color
        opacity: !root.enabled ? MediaTheme.disabledOpacity : root.down ? MediaTheme.pressedOpacity : 1
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
