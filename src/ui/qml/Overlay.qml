import QtQuick
import QtQuick.Templates as T

// Over all of the host's window, in its own scene: nothing behind it can be reached.
T.Popup {
    id: root

    property bool isAnimated: true
    property bool slides: false // up from below, and not out of the dark

    width: parent ? parent.width : 0
    height: parent ? parent.height : 0
    padding: 0
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.NoAutoClose

    enter: isAnimated ? (slides ? slideIn : fadeIn) : null
    exit: isAnimated ? (slides ? slideOut : fadeOut) : null

    Transition {
        id: fadeIn
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 200 }
    }
    Transition {
        id: fadeOut
        NumberAnimation { property: "opacity"; to: 0; duration: 200 }
    }
    Transition {
        id: slideIn
        NumberAnimation { property: "y"; from: root.height; to: 0; duration: 300; easing.type: Easing.OutCubic }
    }
    Transition {
        id: slideOut
        NumberAnimation { property: "y"; to: root.height; duration: 250; easing.type: Easing.InCubic }
    }
}
