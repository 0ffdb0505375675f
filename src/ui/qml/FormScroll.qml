import QtQuick
import Zenvor.Screens

// The sections, one below the other. What has the keyboard is scrolled into sight, above an on-screen keyboard.
Flickable {
    id: root

    required property FeedbackViewController controller
    // How much of the first section's upper edge is never seen: it lies where the sheet's corners are round.
    property real hiddenTop: 0
    default property alias sections: stack.data

    contentWidth: width
    contentHeight: stack.height - hiddenTop
    bottomMargin: root.controller.keyboard.bottomInset
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    onBottomMarginChanged: reveal()

    function scrollTo(y: real) {
        root.contentY = Math.max(Math.min(y, root.contentHeight + root.bottomMargin - root.height), 0)
    }

    function reveal() {
        let item = root.Window.activeFocusItem
        if (item instanceof TextEdit)
            item = item.parent.parent // the box that it scrolls in
        let ancestor = item
        while (ancestor && ancestor !== stack)
            ancestor = ancestor.parent
        if (!ancestor)
            return
        const part = item.mapToItem(root.contentItem, 0, 0, item.width, item.height)
        const lowest = part.y + part.height + SheetTheme.revealMargin - (root.height - root.bottomMargin)
        const highest = part.y - SheetTheme.revealMargin
        root.contentY = Math.max(0, Math.min(Math.max(root.contentY, lowest), highest))
    }

    Behavior on bottomMargin {
        NumberAnimation { duration: root.controller.keyboard.duration }
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() { root.reveal() }
    }

    // Dragged into the keyboard, the form lets go of it.
    PointHandler {
        acceptedDevices: PointerDevice.TouchScreen
        onPointChanged: {
            if (root.dragging && point.scenePosition.y > root.Window.height - root.controller.keyboard.overlap)
                root.controller.doneTapped()
        }
    }

    GrabKeeper { flickable: root }

    Column {
        id: stack
        y: -root.hiddenTop
        width: parent.width
    }
}
