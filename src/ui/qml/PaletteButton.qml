import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A square of the palette: one of several to choose from, or a button.
Tappable {
    id: root

    property string symbol
    property bool isChoice: true
    property bool isChosen: false

    implicitWidth: EditorTheme.toolSize
    implicitHeight: EditorTheme.toolSize
    focusRadius: EditorTheme.toolRadius
    Accessible.role: isChoice ? Accessible.RadioButton : Accessible.Button
    Accessible.checkable: isChoice
    Accessible.checked: isChosen
    Accessible.onToggleAction: root.press()

    SymbolItem {
        anchors.centerIn: parent
        width: EditorTheme.symbolSize
        height: EditorTheme.symbolSize
        visible: name !== ""
        name: root.symbol
        color: EditorTheme.primaryText
        opacity: root.enabled ? (root.down ? EditorTheme.pressedOpacity : 1) : EditorTheme.disabledOpacity
    }
}
