import QtQuick
import QtQuick.Controls.Basic
import Larder

Button {
    id: root

    implicitHeight: Theme.touchHeight
    leftPadding: Theme.margin
    rightPadding: Theme.margin
    font.pixelSize: Theme.textSize
    contentItem: Text {
        textFormat: Text.PlainText
        text: root.text
        font: root.font
        color: root.highlighted ? Theme.accentText : Theme.accent
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: Theme.smallRadius
        color: root.highlighted ? Theme.accent : root.down ? Theme.pressed : Theme.card
        opacity: root.highlighted && root.down ? 0.8 : 1
        border { width: root.highlighted && !root.visualFocus ? 0 : 1; color: root.visualFocus ? Theme.text : Theme.line }
    }
}
