pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Larder

Page {
    id: root

    title: qsTr("Shopping list")
    background: null

    ListView {
        id: list
        anchors { fill: parent; leftMargin: sideMargin; rightMargin: sideMargin }

        readonly property real sideMargin: Math.max(Theme.margin, (root.width - Theme.readingWidth) / 2)

        topMargin: Theme.margin
        bottomMargin: Theme.margin
        spacing: Theme.smallGap
        model: ShoppingList
        clip: true

        delegate: CheckDelegate {
            id: entry

            required property int index
            required property string title
            required property string origin
            required property bool isBought

            width: list.width
            implicitHeight: Theme.touchHeight + Theme.gap
            text: entry.title
            checked: entry.isBought
            onToggled: ShoppingList.setProperty(entry.index, "isBought", checked)
            background: Card { color: entry.down ? Theme.pressed : Theme.card }
            contentItem: Item {
                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    opacity: entry.checked ? 0.5 : 1

                    Text {
                        textFormat: Text.PlainText
                        text: entry.title
                        color: Theme.text
                        font { pixelSize: Theme.textSize; strikeout: entry.checked }
                    }
                    Text {
                        textFormat: Text.PlainText
                        text: entry.origin
                        color: Theme.quietText
                        font.pixelSize: Theme.smallSize
                        visible: text !== ""
                    }
                }
            }
        }
    }
}
