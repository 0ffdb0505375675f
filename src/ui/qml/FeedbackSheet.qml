import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Screen {
    id: root

    required property FeedbackViewController controller

    objectName: "feedbackSheet"
    Accessible.role: Accessible.Dialog
    Accessible.name: root.controller.sheetTitle
    onLeaveRequested: {
        // First what has the keyboard lets go of it.
        if (root.isFieldFocused())
            root.controller.doneTapped()
        else
            root.controller.leave()
    }

    readonly property bool isSending: root.controller.isSending
    onIsSendingChanged: if (isSending) rest.forceActiveFocus()
    Component.onCompleted: root.controller.endEditing.connect(root.leaveField)

    function isFieldFocused(): bool {
        const item = root.Window.activeFocusItem
        return item instanceof TextInput || item instanceof TextEdit
    }
    function leaveField() {
        if (root.isFieldFocused())
            rest.forceActiveFocus()
    }

    Item {
        id: rest // has the keyboard when no control has it, as while it sends: what it is called then is read out
        focus: true
        Accessible.role: Accessible.StaticText
        Accessible.name: root.controller.isSending ? Texts.text("zenvor_sending_a11y", "Sending") : ""
        Accessible.ignored: !root.controller.isSending
    }

    DropArea {
        anchors.fill: parent
        onEntered: drag => drag.accepted = drag.hasUrls && !root.controller.isSending
        onDropped: drop => {
            drop.accept(Qt.CopyAction)
            root.controller.filesDropped(drop.urls)
        }
    }

    Rectangle {
        anchors.fill: parent
        color: SheetTheme.strip
    }

    Rectangle {
        id: sheet

        readonly property real topGap: Math.max(SheetTheme.topGap, Appearance.safeAreaTop)
        property real swiped: 0 // how far down

        anchors {
            horizontalCenter: parent.horizontalCenter
            top: parent.top; topMargin: topGap + swiped
        }
        width: Math.min(parent.width, SheetTheme.greatestWidth)
        height: parent.height - topGap + radius // the lower corners are out of sight
        radius: SheetTheme.cornerRadius
        color: SheetTheme.background

        MouseArea {
            anchors.fill: parent
            preventStealing: true
            onClicked: root.controller.doneTapped()
        }

        NumberAnimation {
            id: back
            target: sheet
            property: "swiped"
            to: 0
            duration: 200
            easing.type: Easing.OutCubic
        }

        FormScroll {
            id: scroll
            objectName: "scrollView"
            anchors {
                fill: parent
                leftMargin: Math.max(0, Appearance.safeAreaLeft - sheet.x)
                topMargin: sheet.radius
                rightMargin: Math.max(0, Appearance.safeAreaRight - sheet.x)
                bottomMargin: sheet.radius + Appearance.safeAreaBottom
            }
            hiddenTop: sheet.radius
            controller: root.controller

            Header {
                width: parent.width
                controller: root.controller

                // A finger that goes down from here takes the sheet along.
                PointHandler {
                    property bool isFromTop: false

                    acceptedDevices: PointerDevice.TouchScreen
                    onPointChanged: {
                        if (active && isFromTop)
                            sheet.swiped = Math.max(point.scenePosition.y - point.scenePressPosition.y - SheetTheme.swipeSlack, 0)
                    }
                    onActiveChanged: {
                        if (active)
                            isFromTop = scroll.contentY <= 0
                        else if (sheet.swiped > SheetTheme.swipeDistance)
                            root.controller.swipedAway()
                        else
                            back.start()
                    }
                }
            }
            SheetSeparator { width: parent.width }
            EmailSection {
                width: parent.width
                controller: root.controller
            }
            SheetSeparator { width: parent.width }
            DescriptionSection {
                width: parent.width
                controller: root.controller
                form: scroll
            }
            SheetSeparator { width: parent.width }
            OccurrenceFrequencySection {
                width: parent.width
                visible: root.controller.isBug
                controller: root.controller
            }
            SheetSeparator {
                width: parent.width
                visible: root.controller.isBug
            }
            ScreenshotSection {
                width: parent.width
                controller: root.controller
            }
            SheetSeparator { width: parent.width }
            ContactSection {
                width: parent.width
                controller: root.controller
            }
            SheetSeparator { width: parent.width }
            ActivityRow {
                width: parent.width
                isActive: root.controller.isSending
            }
        }
    }

    KeyboardAccessory {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; bottomMargin: root.controller.keyboard.overlap - height }
        height: root.controller.keyboard.accessoryHeight
        visible: root.controller.keyboard.overlap > 0
        onDoneTapped: root.controller.doneTapped()
    }
}
