import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources

// What can be tapped: by touch, mouse, keyboard or an assistive tool.
T.AbstractButton {
    id: root

    property real focusRadius: 0

    focusPolicy: Qt.TabFocus
    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    Rectangle {
        anchors.fill: parent
        visible: root.visualFocus
        color: "transparent"
        border { width: 2; color: SystemColors.blue }
        radius: root.focusRadius
    }
}
