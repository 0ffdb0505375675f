pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Larder

ApplicationWindow {
    id: root

    readonly property bool isWide: width >= Theme.wideFrom
    readonly property Page page: pages.currentIndex === 0 ? stack.currentItem as Page
                                                          : pages.children[pages.currentIndex] as Page

    objectName: "larder"
    title: "Larder"
    width: 960
    height: 800
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    font.pixelSize: Theme.textSize
    palette {
        window: Theme.window
        windowText: Theme.text
        disabled.windowText: Theme.quietText
        base: Theme.card
        text: Theme.text
        button: Theme.pressed
        buttonText: Theme.text
        light: Theme.pressed
        midlight: Theme.track
        mid: Theme.track
        dark: Theme.line
        highlight: Theme.accent
        highlightedText: Theme.accentText
        shadow: Theme.shade
    }

    Shortcut {
        sequence: "Ctrl+Shift+S"
        onActivated: Feedback.shake()
    }

    header: ToolBar {
        background: Rectangle {
            color: Theme.bar

            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: Theme.line
            }
        }

        RowLayout {
            anchors { fill: parent; leftMargin: back.visible ? 0 : Theme.margin; rightMargin: Theme.smallGap }

            AppToolButton {
                id: back
                objectName: "backButton"
                text: "‹ " + qsTr("Recipes")
                visible: pages.currentIndex === 0 && stack.depth > 1
                onClicked: stack.pop()
            }
            Heading {
                text: root.page ? root.page.title : ""
                font.pixelSize: Theme.titleSize
                elide: Text.ElideRight
                wrapMode: Text.NoWrap
                Layout.fillWidth: true
            }
            AppToolButton {
                id: menuButton
                objectName: "menuButton"
                implicitWidth: Theme.barHeight
                onClicked: menu.popup(menuButton, 0, menuButton.height)
                Accessible.name: qsTr("Menu")
                contentItem: Item {
                    Column {
                        anchors.centerIn: parent
                        spacing: Theme.markGap

                        Repeater {
                            model: 3

                            Rectangle {
                                width: Theme.markLength
                                height: Theme.markWidth
                                radius: height / 2
                                color: Theme.accent
                            }
                        }
                    }
                }

                AppMenu {
                    id: menu
                    page: content
                }
            }
        }
    }

    // With a ground of its own, for its picture.
    Rectangle {
        id: content
        anchors.fill: parent
        color: Theme.window

        GridLayout {
            anchors.fill: parent
            columns: 1
            rowSpacing: 0

            TabBar {
                id: tabs
                Layout.row: root.isWide ? 0 : 1
                Layout.fillWidth: true
                spacing: 0
                topPadding: root.isWide ? 0 : 1
                bottomPadding: root.isWide ? 1 : 0
                position: root.isWide ? TabBar.Header : TabBar.Footer
                background: Rectangle {
                    color: Theme.bar

                    Rectangle {
                        y: root.isWide ? parent.height - height : 0
                        width: parent.width
                        height: 1
                        color: Theme.line
                    }
                }

                AppTabButton { objectName: "recipesTab"; text: qsTr("Recipes") }
                AppTabButton { objectName: "shoppingTab"; text: qsTr("Shopping") }
                AppTabButton { objectName: "settingsTab"; text: qsTr("Settings") }
            }
            StackLayout {
                id: pages
                Layout.row: root.isWide ? 1 : 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                currentIndex: tabs.currentIndex

                StackView {
                    id: stack
                    objectName: "recipesStack"
                    clip: true
                    initialItem: RecipeListPage {
                        onChosen: recipe => stack.push(recipePage, {"recipe": recipe})
                    }
                }
                ShoppingPage {}
                SettingsPage {}
            }
        }
    }

    Component {
        id: recipePage
        RecipePage {}
    }
}
