import QtQuick
import QtQuick.Controls.Basic
import Larder

ToolButton {
    id: root

    implicitHeight: Theme.barHeight
    font.pixelSize: Theme.textSize
    palette.buttonText: Theme.accent
    background: Rectangle {
        radius: Theme.smallRadius
        color: root.down ? Theme.pressed : "transparent"
        border { width: root.visualFocus ? 1 : 0; color: Theme.accent }
    }
}
