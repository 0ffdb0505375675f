import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property FeedbackViewController controller

    implicitHeight: Math.max(check.y + check.height, label.y + label.height) + SheetTheme.contactBottom
    color: SheetTheme.section

    Tappable {
        id: check
        objectName: "includeContactCheck"
        anchors { left: parent.left; leftMargin: SheetTheme.margin; top: parent.top; topMargin: SheetTheme.contactTop }
        width: SheetTheme.checkSize
        height: SheetTheme.checkSize
        focusRadius: SheetTheme.checkRadius
        text: Texts.text("zenvor_allow_support_contact_a11y", "Allow support contact")
        enabled: !root.controller.isSending
        checkable: true
        checked: root.controller.allowsContact
        Accessible.checked: checked
        Accessible.onToggleAction: press()
        onClicked: {
            root.controller.contactToggleTapped()
            box.border.color = SheetTheme.controlBorder
        }

        background: Rectangle {
            id: box
            radius: SheetTheme.checkRadius
            color: root.controller.allowsContact ? SheetTheme.controlFill : "transparent"
            opacity: check.enabled ? 1 : SheetTheme.disabledOpacity
            border.width: SheetTheme.checkBorder
            Component.onCompleted: border.color = SheetTheme.controlBorder // stays until it is toggled
        }

        SymbolItem {
            anchors.centerIn: parent
            width: SheetTheme.checkSymbolSize
            height: SheetTheme.checkSymbolSize
            visible: root.controller.allowsContact
            opacity: check.enabled ? 1 : SheetTheme.disabledOpacity
            name: "checkmark"
            color: SheetTheme.accent
        }
    }
    Label {
        id: label
        objectName: "includeContactLabel"
        anchors {
            left: check.right; leftMargin: SheetTheme.contactGap
            right: parent.right; rightMargin: SheetTheme.margin
            top: check.top; topMargin: Math.max(0, (check.height - lineHeightOfFirst) / 2)
        }
        readonly property real lineHeightOfFirst: implicitHeight / Math.max(lineCount, 1)
        text: Texts.text("zenvor_contact_checkbox", "Do you want support to contact you about this issue?")
        font: SheetTypography.body
        color: SheetTheme.primaryText
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft

        MouseArea {
            anchors.fill: parent
            enabled: check.enabled
            onClicked: check.press()
        }
    }
}
