import QtQuick
import Zenvor.Screens

// One of several words in a row that can be tapped.
Tappable {
    id: root

    property bool isCurrent: false

    implicitWidth: label.implicitWidth + 2 * MediaTheme.chipPadding
    implicitHeight: MediaTheme.chipHeight
    focusRadius: height / 2

    background: Rectangle {
        radius: height / 2
        color: root.isCurrent ? MediaTheme.chosen : SheetTheme.controlFill
        opacity: root.down ? MediaTheme.pressedOpacity : 1
    }

    Label {
        id: label
        anchors.centerIn: parent
        text: root.text
        font: MediaTheme.chipText
        color: root.isCurrent ? MediaTheme.onPicture : SheetTheme.primaryText
        Accessible.ignored: true
    }
}
