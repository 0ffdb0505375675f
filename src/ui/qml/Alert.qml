import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Screen {
    id: root

    required property AlertViewController controller

    objectName: "alert"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.controller.title
    Accessible.description: root.controller.message
    onLeaveRequested: root.controller.leave()

    Rectangle {
        anchors.fill: parent
        color: AlertTheme.dim
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(AlertTheme.width, parent.width - 2 * AlertTheme.margin)
        height: texts.height + separator.height + ok.height
        radius: AlertTheme.radius
        color: AlertTheme.card

        // A long text scrolls, so that the button can be reached.
        Flickable {
            id: texts
            objectName: "alertTexts"
            width: parent.width
            height: Math.min(contentHeight, root.height - 2 * AlertTheme.margin - AlertTheme.buttonHeight)
            contentHeight: column.height + 2 * AlertTheme.padding
            clip: true
            boundsBehavior: Flickable.StopAtBounds

            GrabKeeper { flickable: texts }

            Column {
                id: column
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: AlertTheme.padding }
                spacing: AlertTheme.gap

                Label {
                    objectName: "alertTitle"
                    width: parent.width
                    text: root.controller.title
                    font: AlertTheme.titleFont
                    color: SystemColors.label
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                    horizontalAlignment: Text.AlignHCenter
                }
                Label {
                    objectName: "alertMessage"
                    width: parent.width
                    text: root.controller.message
                    font: AlertTheme.messageFont
                    color: SystemColors.label
                    wrapMode: Text.Wrap
                    elide: Text.ElideNone
                    horizontalAlignment: Text.AlignHCenter
                }
            }
        }
        Separator {
            id: separator
            anchors.top: texts.bottom
            width: parent.width
        }
        Tappable {
            id: ok
            objectName: "alertOkButton"
            anchors.top: separator.bottom
            width: parent.width
            height: AlertTheme.buttonHeight
            focus: true
            focusRadius: AlertTheme.radius
            text: Texts.text("zenvor_ok", "OK")
            onClicked: root.controller.okTapped()
            Keys.onUpPressed: texts.contentY = Math.max(texts.contentY - AlertTheme.scrollStep, 0)
            Keys.onDownPressed: texts.contentY = Math.min(texts.contentY + AlertTheme.scrollStep, texts.contentHeight - texts.height)

            Label {
                anchors.fill: parent
                text: ok.text
                font: AlertTheme.buttonFont
                color: SystemColors.blue
                opacity: ok.down ? AlertTheme.pressedOpacity : 1
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                Accessible.ignored: true
            }
        }
    }
}
