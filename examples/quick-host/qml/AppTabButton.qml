import QtQuick
import QtQuick.Controls.Basic
import Larder

TabButton {
    id: root

    implicitHeight: Theme.barHeight
    font { pixelSize: Theme.textSize; weight: root.checked ? Font.DemiBold : Font.Normal }
    palette.windowText: Theme.accent
    palette.brightText: Theme.quietText
    background: Rectangle {
        color: root.down ? Theme.pressed : Theme.bar

        Rectangle {
            anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom }
            width: parent.width / 2
            height: Theme.markWidth
            radius: height / 2
            color: Theme.accent
            visible: root.checked
        }
    }
}
