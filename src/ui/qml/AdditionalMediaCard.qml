import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A picture or a video beside the screenshot.
Rectangle {
    id: root

    required property MediaCard card
    required property bool isSending

    signal actionRequested()
    signal removeRequested(byKey: bool)
    signal focusReceived()

    function takeFocus() {
        remove.forceActiveFocus(Qt.TabFocusReason)
    }

    objectName: "mediaCard"
    implicitWidth: SheetTheme.cardWidth
    implicitHeight: SheetTheme.stripHeight
    radius: SheetTheme.screenshotRadius
    color: SheetTheme.fieldBackground
    border.width: 1
    Accessible.role: Accessible.Graphic
    Accessible.name: root.card.isVideo ? Texts.text("zenvor_video_a11y", "Video") : Texts.text("zenvor_picture_a11y", "Picture")
    Component.onCompleted: border.color = SheetTheme.cardBorder // stays as it is

    Rectangle {
        anchors { fill: parent; margins: SheetTheme.screenshotInset }
        radius: SheetTheme.pictureRadius
        color: SheetTheme.mediaPreviewBackground

        PictureItem {
            anchors.fill: parent
            radius: SheetTheme.pictureRadius
            image: root.card.image
        }
        SymbolItem {
            anchors.centerIn: parent
            width: SheetTheme.videoSymbolSize
            height: SheetTheme.videoSymbolSize
            visible: root.card.isVideo && root.card.image === undefined
            name: "video"
            color: SystemColors.blue
        }
    }
    MediaButton {
        id: remove
        objectName: "mediaCardRemoveButton"
        anchors { right: parent.right; top: parent.top; margins: SheetTheme.mediaButtonInset }
        symbol: "xmark"
        text: Texts.text("zenvor_remove_attachment_a11y", "Remove attachment")
        enabled: !root.isSending
        onActiveFocusChanged: if (activeFocus) root.focusReceived()
        onClicked: root.removeRequested(activeFocus)
    }
    MediaButton {
        objectName: "mediaCardActionButton"
        anchors { right: parent.right; bottom: parent.bottom; margins: SheetTheme.mediaButtonInset }
        symbol: root.card.isVideo ? "play.fill" : "pencil"
        text: root.card.isVideo ? Texts.text("zenvor_play_video_a11y", "Play video") : Texts.text("zenvor_edit_picture_a11y", "Edit picture")
        enabled: !root.isSending
        onActiveFocusChanged: if (activeFocus) root.focusReceived()
        onClicked: root.actionRequested()
    }
}
