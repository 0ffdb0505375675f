import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources
import Zenvor.Screens

// A row of the menu, the chosen one with a mark.
T.RadioButton {
    id: root

    implicitHeight: SheetTheme.menuRowHeight
    autoExclusive: false // there is one because the form holds one
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checked: checked
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Component.onCompleted: PointerGrabs.keep(root)
    Keys.onDownPressed: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
    Keys.onUpPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    background: Rectangle {
        radius: SheetTheme.frequencyRadius
        color: root.down ? SheetTheme.controlFill : "transparent"
        border { width: root.visualFocus ? 2 : 0; color: SystemColors.blue }
    }

    Label {
        anchors {
            left: parent.left; leftMargin: SheetTheme.frequencyPadding
            right: mark.left; rightMargin: SheetTheme.frequencyGap
            verticalCenter: parent.verticalCenter
        }
        text: root.text
        font: SheetTypography.fieldText
        color: SheetTheme.primaryText
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
    SymbolItem {
        id: mark
        anchors { right: parent.right; rightMargin: SheetTheme.frequencyPadding; verticalCenter: parent.verticalCenter }
        width: SheetTheme.checkSymbolSize
        height: SheetTheme.checkSymbolSize
        visible: root.checked
        name: "checkmark"
        color: SheetTheme.accent
    }
}
