import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A round button on a video.
Tappable {
    id: root

    required property string symbol

    implicitWidth: MediaTheme.buttonSize
    implicitHeight: MediaTheme.buttonSize
    focusRadius: width / 2

    background: Rectangle {
        radius: width / 2
        color: MediaTheme.shade
    }

    SymbolItem {
        anchors.centerIn: parent
        width: MediaTheme.buttonSymbolSize
        height: MediaTheme.buttonSymbolSize
        name: root.symbol
        color: MediaTheme.playerText
        opacity: root.down ? MediaTheme.pressedOpacity : 1
    }
}
