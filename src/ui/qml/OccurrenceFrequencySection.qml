pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property FeedbackViewController controller

    implicitHeight: button.y + button.height + SheetTheme.frequencyPadding
    color: SheetTheme.section

    Label {
        id: title
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: parent.top; topMargin: SheetTheme.frequencyPadding
        }
        text: Texts.text("zenvor_occurrence_frequency_label", "How often does this happen?")
        font: SheetTypography.frequencyLabel
        color: SheetTheme.primaryText
        horizontalAlignment: Text.AlignLeft
    }
    Tappable {
        id: button
        objectName: "occurrenceFrequencyButton"
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: title.bottom; topMargin: SheetTheme.frequencyGap
        }
        height: SheetTheme.frequencyHeight
        focusRadius: SheetTheme.frequencyRadius
        text: root.controller.occurrenceFrequencies[root.controller.selectedOccurrenceFrequency]
        enabled: !root.controller.isSending
        Accessible.description: title.text
        onClicked: menu.open()

        background: Rectangle {
            radius: SheetTheme.frequencyRadius
            color: SheetTheme.fieldBackground
            border.width: 1
            Component.onCompleted: border.color = SheetTheme.cardBorder // stays as it is
        }

        Label {
            anchors {
                left: parent.left; leftMargin: SheetTheme.frequencyPadding
                right: chevron.left; rightMargin: SheetTheme.frequencyGap
                verticalCenter: parent.verticalCenter
            }
            text: button.text
            font: SheetTypography.fieldText
            color: SheetTheme.primaryText
            opacity: button.enabled ? 1 : SheetTheme.disabledOpacity
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
        SymbolItem {
            id: chevron
            anchors { right: parent.right; rightMargin: SheetTheme.frequencyPadding; verticalCenter: parent.verticalCenter }
            width: SheetTheme.chevronSize
            height: SheetTheme.chevronSize
            name: "chevron.down"
            color: SheetTheme.secondaryText
        }

        T.Popup {
            id: menu
            y: button.height
            width: button.width
            height: Math.min(choices.height + 2 * padding, root.Window.height - 2 * margins)
            margins: SheetTheme.menuMargin
            modal: true
            dim: false
            focus: true
            padding: 1
            closePolicy: T.Popup.CloseOnPressOutside
            onOpened: rows.itemAt(root.controller.selectedOccurrenceFrequency).forceActiveFocus(Qt.PopupFocusReason)
            onClosed: button.forceActiveFocus(Qt.PopupFocusReason)

            background: Rectangle {
                radius: SheetTheme.frequencyRadius
                color: SheetTheme.fieldBackground
                border { width: 1; color: SheetTheme.controlBorder }
            }

            contentItem: Screen {
                onLeaveRequested: menu.close()
                Accessible.role: Accessible.PopupMenu

                Flickable {
                    id: list
                    anchors.fill: parent
                    contentHeight: choices.height
                    clip: true
                    boundsBehavior: Flickable.StopAtBounds

                    GrabKeeper { flickable: list }

                    Column {
                        id: choices
                        width: parent.width

                        Repeater {
                            id: rows
                            model: root.controller.occurrenceFrequencies

                            FrequencyChoice {
                                required property int index
                                required property string modelData

                                objectName: "occurrenceFrequencyChoice"
                                width: choices.width
                                text: modelData
                                checked: index === root.controller.selectedOccurrenceFrequency
                                onClicked: {
                                    root.controller.selectedOccurrenceFrequency = index
                                    menu.close()
                                }
                            }
                        }
                    }
                }
            }
        }
    }
}
