import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Screen {
    id: root

    required property CategoryDialogViewController controller
    required property var backdrop // an image of the host's window, blurred

    objectName: "categoryDialog"
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.text("zenvor_need_help", "Need help?")
    onLeaveRequested: root.controller.leave()

    PictureItem {
        objectName: "blurView"
        anchors.fill: parent
        image: root.backdrop

        Rectangle {
            anchors.fill: parent
            color: SystemColors.chromeMaterial
        }
    }

    Rectangle {
        objectName: "dimView"
        anchors.fill: parent
        color: DialogTheme.dim
    }

    MouseArea {
        anchors.fill: parent

        property point pressedAt

        preventStealing: true
        onPressed: mouse => pressedAt = Qt.point(mouse.x, mouse.y)
        onClicked: mouse => {
            const way = Qt.vector2d(mouse.x - pressedAt.x, mouse.y - pressedAt.y).length()
            if (way < DialogTheme.tapSlack)
                root.controller.backgroundTapped()
        }
    }

    Rectangle {
        id: card
        objectName: "cardView"
        anchors {
            left: parent.left; leftMargin: DialogTheme.cardMargin
            right: parent.right; rightMargin: DialogTheme.cardMargin
            verticalCenter: parent.verticalCenter; verticalCenterOffset: -DialogTheme.cardRise
        }
        height: content.height + DialogTheme.cardTopPadding
        radius: DialogTheme.cardRadius
        color: DialogTheme.card
        border.width: 1
        // Stays as it is when the appearance changes, unlike everything else.
        Component.onCompleted: border.color = DialogTheme.cardBorder

        MouseArea {
            anchors.fill: parent // a tap on the card is none beside it
            preventStealing: true
        }

        Column {
            id: content
            anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: DialogTheme.cardTopPadding }

            TitleChip {
                width: parent.width
                versionText: root.controller.versionText
            }
            Item {
                width: parent.width
                height: DialogTheme.headerGap
            }
            OptionRow {
                objectName: "reportBugRow"
                width: parent.width
                focus: true
                symbol: "ladybug.fill"
                title: Texts.text("zenvor_report_bug", "Report a bug")
                subtitle: Texts.text("zenvor_report_bug_subtitle",
                                     "Something in the app is broken or does not work as expected")
                onClicked: root.controller.reportBug()
            }
            Separator {
                width: parent.width
            }
            OptionRow {
                objectName: "suggestImprovementRow"
                width: parent.width
                symbol: "megaphone.fill"
                title: Texts.text("zenvor_suggest_improvement", "Suggest an improvement")
                subtitle: Texts.text("zenvor_suggest_improvement_subtitle",
                                     "New ideas or desired enhancements for this app")
                onClicked: root.controller.suggestImprovement()
            }
            Separator {
                width: parent.width
            }
            Tappable {
                id: cancel
                objectName: "cancelButton"
                width: parent.width
                height: DialogTheme.cancelHeight
                focusRadius: DialogTheme.cardRadius
                text: Texts.text("zenvor_cancel", "Cancel")
                onClicked: root.controller.cancelTapped()

                contentItem: Label {
                    text: cancel.text
                    font: DialogTheme.cancelFont
                    color: SystemColors.blue
                    opacity: cancel.down ? DialogTheme.pressedOpacity : 1
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    Accessible.ignored: true
                }
            }
        }
    }
}
