import QtQuick
import Zenvor.Resources

// What every screen does: it takes all keys, so that no shortcut of the host is reached, and is laid out in the
// direction of its texts, whatever the host's is.
FocusScope {
    id: root

    signal leaveRequested()

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
        if (event.key === Qt.Key_Escape || event.key === Qt.Key_Back) {
            event.accepted = true
            root.leaveRequested()
        }
    }
}
