import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources
import Zenvor.Screens

// Where a video is, in milliseconds.
T.Slider {
    id: root

    signal stepRequested(step: int)

    implicitHeight: MediaTheme.buttonSize
    focusPolicy: Qt.TabFocus
    // Not as its steps, to which it would round what is dragged.
    Keys.onLeftPressed: root.stepRequested(-MediaTheme.seekStep)
    Keys.onRightPressed: root.stepRequested(MediaTheme.seekStep)
    Accessible.onDecreaseAction: root.stepRequested(-MediaTheme.seekStep)
    Accessible.onIncreaseAction: root.stepRequested(MediaTheme.seekStep)
    Accessible.role: Accessible.Slider
    Accessible.name: Texts.text("zenvor_position_a11y", "Position")
    Component.onCompleted: PointerGrabs.keep(root)

    background: Item {
        Rectangle {
            id: track
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
            height: MediaTheme.sliderHeight
            radius: height / 2
            color: MediaTheme.sliderTrack
        }
        Rectangle {
            anchors { left: track.left; top: track.top; bottom: track.bottom }
            width: root.visualPosition * track.width
            radius: height / 2
            color: MediaTheme.playerText
        }
    }
    handle: Rectangle {
        x: root.visualPosition * (root.width - width)
        y: (root.height - height) / 2
        width: MediaTheme.sliderHandle
        height: width
        radius: height / 2
        color: MediaTheme.playerText
        border { width: root.visualFocus ? 3 : 0; color: SystemColors.blue }
    }
}
