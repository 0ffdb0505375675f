import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property bool isActive

    implicitHeight: SheetTheme.activityHeight
    color: SheetTheme.background

    SymbolItem {
        objectName: "activityIndicator"
        anchors.centerIn: parent
        width: SheetTheme.activitySize
        height: SheetTheme.activitySize
        visible: root.isActive
        name: "rays"
        color: SystemColors.gray
        Accessible.role: Accessible.Animation
        Accessible.name: Texts.text("zenvor_sending_a11y", "Sending")

        RotationAnimation on rotation {
            running: root.isActive
            loops: Animation.Infinite
            from: 0
            to: 360
            duration: 1000
        }
    }
}
