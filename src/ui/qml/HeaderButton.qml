import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A round button with a drawing.
Tappable {
    id: root

    required property string symbol

    implicitWidth: SheetTheme.headerButtonSize
    implicitHeight: SheetTheme.headerButtonSize
    focusRadius: width / 2

    background: Rectangle {
        radius: width / 2
        color: SheetTheme.headerButtonBackground
        border.width: 1
        Component.onCompleted: border.color = SheetTheme.headerButtonBorder // stays as it is
    }

    SymbolItem {
        anchors.centerIn: parent
        width: SheetTheme.headerSymbolSize
        height: SheetTheme.headerSymbolSize
        name: root.symbol
        color: SheetTheme.accent
        opacity: root.enabled ? (root.down ? SheetTheme.pressedOpacity : 1) : SheetTheme.disabledOpacity
    }
}
