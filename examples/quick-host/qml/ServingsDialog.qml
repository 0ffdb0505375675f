import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Larder

Dialog {
    id: root

    required property Recipe recipe

    anchors.centerIn: parent
    width: Math.min(Theme.dialogWidth, parent ? parent.width - 2 * Theme.margin : 0)
    modal: true
    padding: Theme.margin
    onAboutToShow: people.value = root.recipe.servings
    onAccepted: ShoppingList.addRecipe(root.recipe, people.value)

    background: Card {}
    header: Heading {
        text: qsTr("Add to the shopping list")
        padding: Theme.margin
        bottomPadding: 0
    }
    footer: RowLayout {
        spacing: Theme.gap

        AppButton {
            objectName: "cancelDialogButton"
            text: qsTr("Cancel")
            onClicked: root.reject()
            Layout.fillWidth: true
            Layout.leftMargin: Theme.margin
            Layout.bottomMargin: Theme.margin
        }
        AppButton {
            objectName: "acceptDialogButton"
            text: qsTr("Add")
            highlighted: true
            onClicked: root.accept()
            Layout.fillWidth: true
            Layout.rightMargin: Theme.margin
            Layout.bottomMargin: Theme.margin
        }
    }

    RowLayout {
        width: parent.width

        Text {
            textFormat: Text.PlainText
            text: qsTr("For how many people?")
            color: Theme.text
            font.pixelSize: Theme.textSize
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
        SpinBox {
            id: people
            from: 1
            to: 12
        }
    }
}
