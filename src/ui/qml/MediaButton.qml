import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A small round button on a picture.
Tappable {
    id: root

    required property string symbol

    implicitWidth: SheetTheme.mediaButtonSize
    implicitHeight: SheetTheme.mediaButtonSize
    focusRadius: width / 2

    background: Rectangle {
        radius: width / 2
        color: SheetTheme.mediaActionBackground
        opacity: root.enabled ? 1 : SheetTheme.disabledOpacity
    }

    SymbolItem {
        anchors.centerIn: parent
        width: SheetTheme.mediaSymbolSize
        height: SheetTheme.mediaSymbolSize
        name: root.symbol
        color: SheetTheme.mediaActionTint
        opacity: root.down ? SheetTheme.pressedOpacity : 1
    }
}
