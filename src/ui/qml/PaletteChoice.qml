import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources
import Zenvor.Screens

// One of several things to draw with.
T.RadioButton {
    id: root

    property bool isMarked: false

    implicitWidth: EditorTheme.toolSize
    implicitHeight: EditorTheme.toolSize
    autoExclusive: false // the palette holds one of each kind
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: root.clicked()
    Accessible.onToggleAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Component.onCompleted: PointerGrabs.keep(root)

    background: Item {
        Rectangle {
            anchors { fill: parent; margins: EditorTheme.toolInset }
            radius: EditorTheme.toolRadius - EditorTheme.toolInset
            visible: root.isMarked
            color: EditorTheme.chosen
        }
        Rectangle {
            anchors.fill: parent
            visible: root.visualFocus
            color: "transparent"
            border { width: EditorTheme.ringWidth; color: SystemColors.blue }
            radius: EditorTheme.toolRadius
        }
    }
}
