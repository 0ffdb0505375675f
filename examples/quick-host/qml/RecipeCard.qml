import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Larder

ItemDelegate {
    id: root

    required property Recipe recipe

    padding: 1
    text: root.recipe.title
    background: Card {
        color: root.down ? Theme.pressed : Theme.card
        border.color: root.visualFocus ? Theme.accent : Theme.line
    }
    contentItem: ColumnLayout {
        spacing: 0

        RecipePicture {
            recipe: root.recipe
            Layout.fillWidth: true
            Layout.preferredHeight: Theme.tileHeight
            Layout.margins: Theme.smallGap
        }
        Heading {
            text: root.recipe.title
            elide: Text.ElideRight
            wrapMode: Text.NoWrap
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
        }
        Text {
            textFormat: Text.PlainText
            text: qsTr("%1 min · serves %2").arg(root.recipe.minutes).arg(root.recipe.servings)
            color: Theme.quietText
            font.pixelSize: Theme.smallSize
            Layout.fillWidth: true
            Layout.margins: Theme.gap
            Layout.topMargin: Theme.smallGap
        }
    }
}
