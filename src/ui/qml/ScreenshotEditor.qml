import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Screen {
    id: root

    required property ScreenshotEditorViewController controller

    objectName: "screenshotEditor"
    Accessible.role: Accessible.Dialog
    Accessible.name: Texts.text("zenvor_edit_screenshot_a11y", "Edit screenshot")
    onLeaveRequested: root.controller.leave()

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onPressed: event => {
            if (event.matches(StandardKey.Undo))
                root.controller.undoTapped()
            else if (event.matches(StandardKey.Redo) || event.key === Qt.Key_Y && event.modifiers === Qt.ControlModifier)
                root.controller.redoTapped()
            else
                event.accepted = false
        }

        Rectangle {
            anchors.fill: parent
            color: EditorTheme.background

            MouseArea {
                anchors.fill: parent
                preventStealing: true
            }
        }

        PictureItem {
            id: imageView
            objectName: "imageView"
            anchors {
                left: parent.left; right: parent.right
                top: topBar.bottom; topMargin: EditorTheme.pictureGap
                bottom: parent.bottom
            }
            isWhole: true
            image: root.controller.sourceImage
            Accessible.role: Accessible.Graphic
            Accessible.name: Texts.text("zenvor_screenshot_a11y", "Screenshot")
        }

        CanvasItem {
            objectName: "canvasView"
            anchors.fill: imageView
            focus: true
            drawing: root.controller.drawing
            tools: root.controller.tools
            Accessible.role: Accessible.Canvas
            Accessible.name: Texts.text("zenvor_drawing_a11y", "Drawing")
        }

        Rectangle {
            id: topBar

            readonly property real side: (width - clear.width) / 2 - EditorTheme.margin - EditorTheme.buttonGap

            objectName: "topBar"
            anchors {
                left: parent.left; right: parent.right
                top: parent.top; topMargin: Appearance.safeAreaTop
            }
            height: EditorTheme.topBarHeight
            color: EditorTheme.topBar

            EditorButton {
                objectName: "cancelEditButton"
                anchors { left: parent.left; leftMargin: EditorTheme.margin; verticalCenter: parent.verticalCenter }
                width: Math.min(implicitWidth, topBar.side)
                text: Texts.text("zenvor_cancel", "Cancel")
                color: EditorTheme.primaryText
                onClicked: root.controller.cancelTapped()
            }
            EditorButton {
                id: clear
                objectName: "clearButton"
                anchors { centerIn: parent; alignWhenCentered: false }
                width: Math.min(implicitWidth, parent.width / 3)
                text: Texts.text("zenvor_clear", "Clear")
                color: EditorTheme.secondaryText
                onClicked: root.controller.clearTapped()
            }
            EditorButton {
                objectName: "saveButton"
                anchors { right: parent.right; rightMargin: EditorTheme.margin; verticalCenter: parent.verticalCenter }
                width: Math.min(implicitWidth, topBar.side)
                text: Texts.text("zenvor_save", "Save")
                textFont: EditorTheme.saveFont
                color: EditorTheme.accent
                onClicked: root.controller.saveTapped()
            }
        }

        ToolPicker {
            objectName: "toolPicker"
            anchors {
                left: parent.left; leftMargin: Math.max(EditorTheme.paletteMargin, Appearance.safeAreaLeft)
                right: parent.right; rightMargin: Math.max(EditorTheme.paletteMargin, Appearance.safeAreaRight)
                bottom: parent.bottom; bottomMargin: Math.max(EditorTheme.paletteMargin, Appearance.safeAreaBottom)
            }
            controller: root.controller
        }
    }
}
