import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property FeedbackViewController controller

    implicitHeight: field.y + field.height + SheetTheme.emailBottom
    color: SheetTheme.section

    Label {
        id: title
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: parent.top; topMargin: SheetTheme.emailTop
        }
        text: Texts.text("zenvor_email_section_title", "Email")
        font: SheetTypography.sectionTitle
        color: SheetTheme.primaryText
        horizontalAlignment: Text.AlignLeft
    }
    T.TextField {
        id: field
        objectName: "emailField"
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: title.bottom; topMargin: SheetTheme.emailGap
        }
        height: SheetTheme.emailHeight
        font: SheetTypography.fieldText
        color: SheetTheme.primaryText
        selectionColor: SystemColors.blue
        selectedTextColor: SheetTheme.mediaActionTint
        selectByMouse: true
        verticalAlignment: TextInput.AlignVCenter
        inputMethodHints: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
        EnterKey.type: Qt.EnterKeyDone
        readOnly: root.controller.isSending
        onTextEdited: root.controller.email = text
        onAccepted: root.controller.doneTapped()
        Accessible.role: Accessible.EditableText
        Accessible.name: title.text

        Label {
            anchors.fill: parent
            visible: field.length === 0 && field.preeditText === ""
            text: Texts.text("zenvor_email_hint", "you@example.com")
            font: field.font
            color: SheetTheme.secondaryText
            verticalAlignment: Text.AlignVCenter
            horizontalAlignment: Text.AlignLeft
            Accessible.ignored: true
        }
    }
}
