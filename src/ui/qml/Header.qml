import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property FeedbackViewController controller

    implicitHeight: SheetTheme.headerHeight
    color: SheetTheme.background

    HeaderButton {
        id: close
        objectName: "closeButton"
        anchors { left: parent.left; leftMargin: SheetTheme.headerMargin; verticalCenter: parent.verticalCenter }
        symbol: "xmark"
        text: Texts.text("zenvor_close_a11y", "Close")
        enabled: !root.controller.isSending
        onClicked: root.controller.closeTapped()
    }
    Label {
        anchors {
            left: close.right; leftMargin: SheetTheme.headerTitleGap
            right: send.left; rightMargin: SheetTheme.headerTitleGap
            verticalCenter: parent.verticalCenter
        }
        text: root.controller.sheetTitle
        font: SheetTypography.headerTitle
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: SheetTypography.headerTitleSmallestSize
        color: SheetTheme.primaryText
        horizontalAlignment: Text.AlignHCenter
        Accessible.role: Accessible.Heading
    }
    HeaderButton {
        id: send
        objectName: "sendTopButton"
        anchors { right: parent.right; rightMargin: SheetTheme.headerMargin; verticalCenter: parent.verticalCenter }
        symbol: "paperplane.fill"
        text: Texts.text("zenvor_send_a11y", "Send")
        enabled: !root.controller.isSending
        onClicked: root.controller.sendTapped()
    }
}
