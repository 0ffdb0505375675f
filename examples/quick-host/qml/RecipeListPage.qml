pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Larder

Page {
    id: root

    signal chosen(recipe: Recipe)

    title: qsTr("Recipes")
    background: null

    GridView {
        id: grid

        readonly property int columns: Math.max(1, Math.floor(width / Theme.cardWidth))

        anchors { fill: parent; leftMargin: Theme.margin; rightMargin: Theme.margin - Theme.gap }
        topMargin: Theme.margin
        cellWidth: Math.floor(width / columns)
        cellHeight: Theme.tileHeight + 2 * Theme.smallGap + Theme.headingSize + Theme.smallSize + 4 * Theme.gap
        model: Recipes.all
        clip: true
        focus: true
        ScrollBar.vertical: ScrollBar {}

        delegate: Item {
            id: cell

            required property Recipe modelData

            width: grid.cellWidth
            height: grid.cellHeight

            RecipeCard {
                objectName: "recipe"
                anchors { fill: parent; rightMargin: Theme.gap; bottomMargin: Theme.gap }
                recipe: cell.modelData
                onClicked: root.chosen(recipe)
            }
        }
    }
}
