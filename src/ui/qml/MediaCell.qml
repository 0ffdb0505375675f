import QtQuick
import QtQuick as Q
import Zenvor.Resources
import Zenvor.Screens

// A folder, picture or video that can be chosen.
Tappable {
    id: root

    required property string name
    required property bool isFolder
    required property bool isVideo
    required property string thumbnail
    required property int selection // its place among what is chosen, or 0
    required property bool isCurrent // of the keyboard
    required property bool isChoosable

    readonly property bool isChosen: selection > 0
    // What is asked of the decoder, in pixels: more than the width, for the picture is cropped, and not a new size for each
    // step of a window that is resized.
    readonly property real pictureSize: Math.ceil(width * 1.5 * Q.Screen.devicePixelRatio / 64) * 64

    objectName: isFolder ? "mediaPickerFolder" : "mediaPickerItem"
    text: name
    focusPolicy: Qt.NoFocus
    enabled: isFolder || isChoosable || isChosen
    checkable: !isFolder
    checked: isChosen
    Accessible.checked: isChosen
    Accessible.description: isVideo ? Texts.text("zenvor_video_a11y", "Video") : ""
    Accessible.onToggleAction: press()

    Rectangle {
        anchors { fill: parent; margins: MediaTheme.cellGap / 2 }
        color: SheetTheme.mediaPreviewBackground
    }
    Image {
        id: picture
        readonly property bool isShown: status === Image.Ready && implicitWidth > 0 // else it could not be decoded
        anchors { fill: parent; margins: MediaTheme.cellGap / 2 }
        source: root.width > 0 ? root.thumbnail : ""
        sourceSize { width: root.pictureSize; height: root.pictureSize }
        cache: false // the picker keeps nothing once it is closed
        fillMode: Image.PreserveAspectCrop
        opacity: root.enabled ? 1 : MediaTheme.disabledOpacity
        Accessible.ignored: true
    }
    SymbolItem {
        anchors { centerIn: parent; verticalCenterOffset: -label.height / 2 }
        width: MediaTheme.symbolSize
        height: MediaTheme.symbolSize
        visible: !picture.isShown
        name: root.isFolder ? "folder.fill" : root.isVideo ? "video" : "photo"
        color: root.isFolder ? SystemColors.blue : SystemColors.gray
    }
    Label {
        id: label
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: MediaTheme.badgeInset }
        visible: root.isFolder || (picture.status === Image.Ready && !picture.isShown)
        text: root.name
        font: MediaTheme.name
        color: SheetTheme.primaryText
        elide: Text.ElideMiddle
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
    Rectangle {
        anchors { left: parent.left; bottom: parent.bottom; margins: MediaTheme.badgeInset }
        width: MediaTheme.badgeSize
        height: MediaTheme.badgeSize
        radius: height / 2
        visible: root.isVideo && picture.isShown
        color: MediaTheme.shade

        SymbolItem {
            anchors.centerIn: parent
            width: MediaTheme.smallSymbolSize
            height: MediaTheme.smallSymbolSize
            name: "video"
            color: MediaTheme.onPicture
        }
    }
    Rectangle {
        anchors { right: parent.right; top: parent.top; margins: MediaTheme.badgeInset }
        width: MediaTheme.badgeSize
        height: MediaTheme.badgeSize
        radius: height / 2
        visible: !root.isFolder
        color: root.isChosen ? MediaTheme.chosen : MediaTheme.shade
        border { width: 1.5; color: MediaTheme.onPicture }
        opacity: root.enabled ? 1 : 0

        Label {
            anchors.centerIn: parent
            visible: root.isChosen
            text: root.selection
            font: MediaTheme.chipText
            color: MediaTheme.onPicture
            Accessible.ignored: true
        }
    }
    Rectangle {
        anchors { fill: parent; margins: MediaTheme.cellGap / 2 }
        visible: root.isCurrent || root.isChosen
        color: "transparent"
        border { width: 3; color: root.isCurrent ? SheetTheme.primaryText : MediaTheme.chosen }
    }
}
