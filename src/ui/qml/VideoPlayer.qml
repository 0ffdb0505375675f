import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Screen {
    id: root

    required property VideoPlayerViewController controller

    objectName: "videoPlayer"
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.text("zenvor_video_a11y", "Video")
    onLeaveRequested: root.controller.leave()
    Component.onCompleted: playPause.forceActiveFocus(Qt.PopupFocusReason)

    // Nobody watches a window that is hidden.
    readonly property bool isSeen: root.Window.visibility !== Window.Hidden && root.Window.visibility !== Window.Minimized
    onIsSeenChanged: if (!isSeen && root.controller.isPlaying) root.controller.playPauseTapped()

    function minutes(ms: real): string {
        const seconds = Math.floor(ms / 1000)
        const rest = seconds % 60
        return Math.floor(seconds / 60) + (rest < 10 ? ":0" : ":") + rest
    }

    Rectangle {
        anchors.fill: parent
        color: MediaTheme.playerBackground
    }

    Item {
        id: area
        anchors {
            left: parent.left; leftMargin: Appearance.safeAreaLeft
            right: parent.right; rightMargin: Appearance.safeAreaRight
            top: parent.top; topMargin: Appearance.safeAreaTop
            bottom: parent.bottom; bottomMargin: Appearance.safeAreaBottom
        }

        PictureItem {
            objectName: "videoPicture"

            readonly property size natural: root.controller.pictureSize
            readonly property real enlargement: Math.min(area.width / Math.max(natural.width, 1), area.height / Math.max(natural.height, 1))

            anchors.centerIn: parent
            width: natural.width * enlargement
            height: natural.height * enlargement
            image: root.controller.picture
            Accessible.role: Accessible.Graphic
            Accessible.name: Texts.text("zenvor_video_a11y", "Video")
        }
        PlayerButton {
            objectName: "videoPlayerClose"
            anchors { left: parent.left; top: parent.top; margins: MediaTheme.margin }
            symbol: "xmark"
            text: Texts.text("zenvor_close_a11y", "Close")
            onClicked: root.controller.closeTapped()
        }
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: MediaTheme.margin }
            height: MediaTheme.barHeight
            radius: height / 2
            color: MediaTheme.shade
            LayoutMirroring.enabled: false // time runs to the right everywhere
            LayoutMirroring.childrenInherit: true

            PlayerButton {
                id: playPause
                objectName: "videoPlayerPlayPause"
                anchors { left: parent.left; leftMargin: MediaTheme.badgeInset; verticalCenter: parent.verticalCenter }
                symbol: root.controller.isPlaying ? "pause.fill" : "play.fill"
                text: root.controller.isPlaying ? Texts.text("zenvor_pause_a11y", "Pause") : Texts.text("zenvor_play_a11y", "Play")
                onClicked: root.controller.playPauseTapped()
            }
            Label {
                id: now
                anchors { left: playPause.right; verticalCenter: parent.verticalCenter }
                width: MediaTheme.timeWidth
                text: root.minutes(slider.value)
                font: MediaTheme.time
                color: MediaTheme.playerText
                horizontalAlignment: Text.AlignHCenter
            }
            TimeSlider {
                id: slider
                objectName: "videoPlayerSlider"
                anchors { left: now.right; right: all.left; verticalCenter: parent.verticalCenter }
                to: Math.max(root.controller.duration, 1)
                enabled: root.controller.duration > 0
                onMoved: root.controller.seek(value)
                onStepRequested: step => root.controller.seek(root.controller.position + step)

                Binding on value {
                    when: !slider.pressed
                    value: root.controller.position
                }
            }
            Label {
                id: all
                anchors { right: parent.right; rightMargin: MediaTheme.margin; verticalCenter: parent.verticalCenter }
                width: MediaTheme.timeWidth
                text: root.minutes(root.controller.duration)
                font: MediaTheme.time
                color: MediaTheme.playerText
                horizontalAlignment: Text.AlignHCenter
            }
        }
    }
}
