import QtQuick
import Zenvor.Resources

// What every screen does: it takes all keys, so that no shortcut of the host is reached, and is laid out in the
// direction of its texts, whatever the host's is.
FocusScope {
    id: root

    signal leaveRequested()

    property bool isBackPressed: false

    focus: true
    LayoutMirroring.enabled: Texts.isRightToLeft()
    LayoutMirroring.childrenInherit: true

    // What is dragged here ends here: items behind this one would be offered it otherwise.
    DropArea {
        anchors.fill: parent
        onDropped: drop => drop.accept(Qt.IgnoreAction)
    }

    Keys.onShortcutOverride: event => event.accepted = true
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Escape && !event.isAutoRepeat)
            root.leaveRequested()
        root.isBackPressed = event.key === Qt.Key_Back
        event.accepted = event.key === Qt.Key_Escape || root.isBackPressed
    }
    // At its release, which the host would get otherwise when this is gone.
    Keys.onReleased: event => {
        if (event.key !== Qt.Key_Back || event.isAutoRepeat)
            return
        event.accepted = true
        if (root.isBackPressed)
            root.leaveRequested()
        root.isBackPressed = false
    }
}
