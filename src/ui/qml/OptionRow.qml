import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Tappable {
    id: root

    required property string symbol
    required property string title
    required property string subtitle

    text: title
    Accessible.description: subtitle
    implicitHeight: Math.max(DialogTheme.rowHeight, texts.height + 2 * DialogTheme.rowPadding)

    background: Rectangle {
        color: root.down ? DialogTheme.pressedRow : "transparent"
    }

    SymbolItem {
        id: picture
        anchors { left: parent.left; leftMargin: DialogTheme.margin; top: parent.top; topMargin: DialogTheme.rowPadding }
        width: DialogTheme.iconSize
        height: DialogTheme.iconSize
        name: root.symbol
        color: SystemColors.secondaryLabel
    }

    Column {
        id: texts
        anchors {
            left: picture.right; leftMargin: DialogTheme.rowSpacing
            right: parent.right; rightMargin: DialogTheme.margin
            top: parent.top; topMargin: DialogTheme.rowPadding
        }
        spacing: DialogTheme.textSpacing

        Label {
            width: parent.width
            text: root.title
            font: DialogTheme.titleFont
            color: SystemColors.label
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        Label {
            width: parent.width
            text: root.subtitle
            font: DialogTheme.subtitleFont
            color: SystemColors.secondaryLabel
            wrapMode: Text.Wrap
            maximumLineCount: 2
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
    }
}
