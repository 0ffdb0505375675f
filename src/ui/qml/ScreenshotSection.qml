pragma ComponentBehavior: Bound
import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property FeedbackViewController controller

    implicitHeight: strip.y + strip.height + SheetTheme.screenshotBottom
    color: SheetTheme.section

    Item {
        id: place // stays where it is without a screenshot
        anchors { left: parent.left; leftMargin: SheetTheme.margin; top: parent.top; topMargin: SheetTheme.screenshotTop }
        width: SheetTheme.screenshotSize
        height: SheetTheme.screenshotSize

        Rectangle {
            objectName: "screenshotContainer"
            anchors.fill: parent
            visible: root.controller.screenshot !== undefined
            radius: SheetTheme.screenshotRadius
            color: SheetTheme.fieldBackground
            border.width: 1
            Component.onCompleted: border.color = SheetTheme.cardBorder // stays as it is

            PictureItem {
                objectName: "screenshotImageView"
                anchors { fill: parent; margins: SheetTheme.screenshotInset }
                radius: SheetTheme.pictureRadius
                image: root.controller.screenshot
                Accessible.role: Accessible.Graphic
                Accessible.name: Texts.text("zenvor_screenshot_a11y", "Screenshot")
            }
            MediaButton {
                objectName: "removeScreenshotButton"
                anchors { right: parent.right; top: parent.top; margins: SheetTheme.mediaButtonInset }
                symbol: "xmark"
                text: Texts.text("zenvor_remove_screenshot_a11y", "Remove screenshot")
                enabled: !root.controller.isSending
                onClicked: {
                    if (activeFocus) // it is not seen any more
                        nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
                    root.controller.removeScreenshotTapped()
                }
            }
            MediaButton {
                objectName: "editOverlayButton"
                anchors { right: parent.right; bottom: parent.bottom; margins: SheetTheme.mediaButtonInset }
                symbol: "pencil"
                text: Texts.text("zenvor_edit_screenshot_a11y", "Edit screenshot")
                enabled: !root.controller.isSending
                onClicked: root.controller.editScreenshotTapped()
            }
        }
    }
    Label {
        id: helper
        objectName: "screenshotHelperLabel"
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: place.bottom; topMargin: SheetTheme.helperGap
        }
        text: root.controller.helperText
        font: SheetTypography.helper
        color: SheetTheme.secondaryText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
    }
    Tappable {
        id: addMedia
        objectName: "addMediaButton"
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            top: helper.bottom; topMargin: SheetTheme.addMediaGap
        }
        width: Math.min(addMediaLabel.implicitWidth + 2 * SheetTheme.addMediaPaddingX, parent.width - 2 * SheetTheme.margin)
        height: addMediaLabel.implicitHeight + 2 * SheetTheme.addMediaPaddingY
        focusRadius: SheetTheme.addMediaRadius
        text: root.controller.addMediaTitle
        enabled: !root.controller.isSending
        onClicked: root.controller.addMediaTapped()

        background: Rectangle {
            radius: SheetTheme.addMediaRadius
            color: "transparent"
            border.width: 1
            Component.onCompleted: border.color = SheetTheme.addMediaBorder // stays as it is
        }

        Label {
            id: addMediaLabel
            anchors { fill: parent; leftMargin: SheetTheme.addMediaPaddingX; rightMargin: SheetTheme.addMediaPaddingX }
            text: addMedia.text
            font: SheetTypography.helperStrong
            color: SheetTheme.accent
            opacity: addMedia.down ? SheetTheme.pressedOpacity : 1
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }
    Flickable {
        id: strip
        objectName: "additionalMediaScrollView"
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: addMedia.bottom; topMargin: SheetTheme.stripGap
        }
        height: visible ? SheetTheme.stripHeight : 0
        visible: cards.count > 0
        contentWidth: Math.max(row.width, width)
        onContentWidthChanged: contentX = LayoutMirroring.enabled ? contentWidth - width : 0 // where reading begins
        contentHeight: height
        clip: true
        flickableDirection: Flickable.HorizontalFlick

        function reveal(item: Item) {
            strip.contentX = Math.max(Math.min(strip.contentX, item.x), item.x + item.width - strip.width)
        }

        Row {
            id: row
            anchors.left: parent.left
            spacing: SheetTheme.cardSpacing

            Repeater {
                id: cards
                model: root.controller.mediaCards

                AdditionalMediaCard {
                    id: entry

                    required property int index

                    isSending: root.controller.isSending
                    onFocusReceived: strip.reveal(entry)
                    onActionRequested: {
                        if (entry.card.isVideo)
                            root.controller.previewVideoAttachment(index)
                        else
                            root.controller.editAdditionalScreenshot(index)
                    }
                    onRemoveRequested: byKey => {
                        const neighbour = Math.min(index, cards.count - 2)
                        root.controller.removeAdditionalAttachment(index)
                        if (byKey && neighbour < 0)
                            addMedia.forceActiveFocus(Qt.TabFocusReason)
                        else if (byKey)
                            (cards.itemAt(neighbour) as AdditionalMediaCard).takeFocus()
                    }
                }
            }
        }
    }
}
