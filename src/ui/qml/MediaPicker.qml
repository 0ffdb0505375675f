pragma ComponentBehavior: Bound
import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Screen {
    id: root

    required property MediaPickerViewController controller

    objectName: "mediaPicker"
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.text("zenvor_picker_a11y", "Photos and videos")
    onLeaveRequested: root.controller.leave()
    Component.onCompleted: {
        root.controller.start()
        grid.forceActiveFocus(Qt.PopupFocusReason)
    }

    Rectangle {
        anchors.fill: parent
        color: SheetTheme.background
    }

    Item {
        id: bar
        anchors {
            left: parent.left; leftMargin: MediaTheme.margin - MediaTheme.actionPadding + Appearance.safeAreaLeft
            right: parent.right; rightMargin: MediaTheme.margin - MediaTheme.actionPadding + Appearance.safeAreaRight
            top: parent.top; topMargin: Appearance.safeAreaTop
        }
        height: MediaTheme.barHeight

        TextButton {
            id: cancel
            objectName: "mediaPickerCancel"
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            text: Texts.text("zenvor_cancel", "Cancel")
            onClicked: root.controller.cancelTapped()
        }
        Label {
            objectName: "mediaPickerTitle"
            anchors {
                left: cancel.right; leftMargin: MediaTheme.margin
                right: done.left; rightMargin: MediaTheme.margin
                verticalCenter: parent.verticalCenter
            }
            text: root.controller.folderName
            font: MediaTheme.title
            color: SheetTheme.primaryText
            elide: Text.ElideMiddle
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.Heading
        }
        TextButton {
            id: done
            objectName: "mediaPickerDone"
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            text: root.controller.selectedCount > 0 ? root.doneTitle + " (" + root.controller.selectedCount + ")" : root.doneTitle
            font: MediaTheme.strongAction
            enabled: root.controller.selectedCount > 0
            onClicked: root.controller.doneTapped()
        }
    }
    readonly property string doneTitle: Texts.text("zenvor_done", "Done")

    Flickable {
        id: places
        anchors {
            left: parent.left; leftMargin: Appearance.safeAreaLeft
            right: parent.right; rightMargin: Appearance.safeAreaRight
            top: bar.bottom
        }
        height: MediaTheme.placesHeight
        contentWidth: Math.max(chips.width + 2 * MediaTheme.margin, width)
        onContentWidthChanged: contentX = LayoutMirroring.enabled ? contentWidth - width : 0 // where reading begins
        contentHeight: height
        clip: true
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds

        function reveal(item: Item) {
            const x = item.mapToItem(contentItem, 0, 0).x - MediaTheme.margin
            contentX = Math.max(Math.min(contentX, x), x + item.width + 2 * MediaTheme.margin - width)
        }

        GrabKeeper { flickable: places }

        Row {
            id: chips
            anchors { left: parent.left; leftMargin: MediaTheme.margin; verticalCenter: parent.verticalCenter }
            spacing: MediaTheme.chipGap

            Chip {
                objectName: "mediaPickerUp"
                text: Texts.text("zenvor_folder_up", "Up")
                enabled: root.controller.canGoUp
                opacity: enabled ? 1 : MediaTheme.disabledOpacity
                onActiveFocusChanged: if (activeFocus) places.reveal(this)
                onClicked: {
                    root.controller.goUp()
                    if (!root.controller.canGoUp) // this one is not to be used any more
                        grid.forceActiveFocus(Qt.TabFocusReason)
                }
            }
            Repeater {
                model: root.controller.places

                Chip {
                    required property var modelData

                    objectName: "mediaPickerPlace"
                    text: modelData.title
                    isCurrent: modelData.path === root.controller.folder
                    onActiveFocusChanged: if (activeFocus) places.reveal(this)
                    onClicked: root.controller.open(modelData.path)
                }
            }
            Chip {
                id: other
                objectName: "mediaPickerOtherFiles"
                text: Texts.text("zenvor_other_files", "Other files…")
                onActiveFocusChanged: if (activeFocus) places.reveal(this)
                onClicked: {
                    otherFiles.active = false
                    otherFiles.active = true
                }
            }
        }
    }

    GridView {
        id: grid

        readonly property int columns: Math.max(MediaTheme.fewestColumns, Math.floor(width / MediaTheme.cellSize))

        objectName: "mediaPickerGrid"
        anchors {
            left: parent.left; leftMargin: Appearance.safeAreaLeft
            right: parent.right; rightMargin: Appearance.safeAreaRight
            top: places.bottom; bottom: parent.bottom
        }
        cellWidth: width / columns
        cellHeight: cellWidth
        cacheBuffer: 0 // what is not seen is not decoded
        bottomMargin: Appearance.safeAreaBottom
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        model: root.controller.entries
        onCountChanged: currentIndex = count > 0 ? 0 : -1
        Accessible.role: Accessible.List
        Accessible.name: root.controller.folderName

        GrabKeeper { flickable: grid }

        delegate: MediaCell {
            required property int index

            width: grid.cellWidth
            height: grid.cellHeight
            isCurrent: grid.isByKey && GridView.isCurrentItem && activeFocus
            isChoosable: !root.controller.isFull
            onClicked: {
                grid.currentIndex = index
                root.controller.entryTapped(index)
            }
            onPressed: grid.isByKey = false
        }

        // Where the keyboard is shows once it is used.
        property bool isByKey: false
        onActiveFocusChanged: if (!activeFocus) isByKey = false
        Keys.onPressed: event => {
            isByKey = true
            event.accepted = false
        }
    }
    Label {
        objectName: "mediaPickerMessage"
        anchors { left: grid.left; right: grid.right; verticalCenter: grid.verticalCenter; margins: MediaTheme.margin }
        visible: text !== ""
        text: root.controller.message
        font: MediaTheme.message
        color: SheetTheme.secondaryText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
    }

    // Its module is loaded when it is asked for; without it there is none.
    Loader {
        id: otherFiles
        active: false
        source: "OtherFiles.qml"
        onStatusChanged: if (status === Loader.Error) other.visible = false
    }
    Connections {
        target: otherFiles.item
        function onFilesChosen(files: var) { root.controller.filesChosen(files) }
    }
}
