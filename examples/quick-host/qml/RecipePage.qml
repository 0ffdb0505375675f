pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Larder

Page {
    id: root

    required property Recipe recipe
    readonly property bool isWide: width >= Theme.wideFrom

    title: root.recipe.title
    background: null

    ServingsDialog {
        id: dialog
        recipe: root.recipe
    }

    Flickable {
        anchors.fill: parent
        contentHeight: column.implicitHeight + 2 * Theme.margin
        clip: true
        ScrollBar.vertical: ScrollBar {}

        ColumnLayout {
            id: column
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
            spacing: Theme.margin

            RecipePicture {
                recipe: root.recipe
                Layout.fillWidth: true
                Layout.preferredHeight: Theme.coverHeight
            }
            Text {
                textFormat: Text.PlainText
                text: root.recipe.summary
                color: Theme.quietText
                font.pixelSize: Theme.textSize
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            GridLayout {
                columns: root.isWide ? 2 : 1
                columnSpacing: Theme.margin
                rowSpacing: Theme.margin
                Layout.fillWidth: true

                Card {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.alignment: Qt.AlignTop
                    implicitHeight: ingredients.implicitHeight + 2 * Theme.margin

                    ColumnLayout {
                        id: ingredients
                        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
                        spacing: Theme.gap

                        Heading { text: qsTr("Ingredients, for %1").arg(root.recipe.servings) }
                        Repeater {
                            model: root.recipe.ingredients

                            Text {
                                required property string modelData

                                textFormat: Text.PlainText
                                text: modelData
                                color: Theme.text
                                font.pixelSize: Theme.textSize
                                wrapMode: Text.Wrap
                                Layout.fillWidth: true
                            }
                        }
                        AppButton {
                            objectName: "shoppingButton"
                            text: qsTr("Add to the shopping list…")
                            highlighted: true
                            onClicked: dialog.open()
                            Layout.fillWidth: true
                        }
                    }
                }
                Card {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    Layout.alignment: Qt.AlignTop
                    implicitHeight: steps.implicitHeight + 2 * Theme.margin

                    ColumnLayout {
                        id: steps
                        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
                        spacing: Theme.gap

                        Heading { text: qsTr("How to do it") }
                        Repeater {
                            model: root.recipe.steps

                            Text {
                                required property int index
                                required property string modelData

                                textFormat: Text.PlainText
                                text: (index + 1) + ". " + modelData
                                color: Theme.text
                                font.pixelSize: Theme.textSize
                                wrapMode: Text.Wrap
                                lineHeight: 1.2
                                Layout.fillWidth: true
                            }
                        }
                    }
                }
            }
        }
    }
}
