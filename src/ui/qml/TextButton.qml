import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A word that can be tapped.
Tappable {
    id: root

    property color color: SystemColors.blue

    font: MediaTheme.action
    implicitWidth: label.implicitWidth
    implicitHeight: MediaTheme.buttonSize
    focusRadius: MediaTheme.badgeInset

    Label {
        id: label
        anchors.fill: parent
        text: root.text
        font: root.font
        color: root.color
        opacity: !root.enabled ? MediaTheme.disabledOpacity : root.down ? MediaTheme.pressedOpacity : 1
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
