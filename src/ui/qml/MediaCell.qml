import QtQuick
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

    objectName: isFolder ? "mediaPickerFolder" : "mediaPickerItem"
    text: name
    focusPolicy: Qt.NoFocus
    enabled: isFolder || isChoosable || isChosen
    checkable: !isFolder
    checked: isChosen
    Accessible.checked: isChosen
    Accessible.description: isVideo ? Texts.text("zenvor_video_a11y", "Video") : ""
    Accessible.onToggleAction: press()

    background: Rectangle {
        color: SheetTheme.mediaPreviewBackground
    }

    Image {
        id: picture
        readonly property bool isShown: status === Image.Ready && implicitWidth > 0 // else it could not be decoded
        anchors.fill: parent
        source: root.thumbnail
        sourceSize { width: root.width * 1.5; height: root.height * 1.5 } // it is cropped
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
        anchors.fill: parent
        visible: root.isCurrent || root.isChosen
        color: "transparent"
        border { width: 3; color: root.isCurrent ? SheetTheme.primaryText : MediaTheme.chosen }
    }
}
