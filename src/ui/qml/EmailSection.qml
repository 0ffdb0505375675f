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

        readonly property real room: clear.visible ? SheetTheme.clearButtonSize + SheetTheme.emailGap : 0

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
        horizontalAlignment: TextInput.AlignLeft // the side on which texts begin, whatever this one is
        inputMethodHints: Qt.ImhEmailCharactersOnly | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
        EnterKey.type: Qt.EnterKeyDone
        leftPadding: LayoutMirroring.enabled ? room : 0
        rightPadding: LayoutMirroring.enabled ? 0 : room
        enabled: !root.controller.isSending
        opacity: enabled ? 1 : SheetTheme.disabledOpacity
        onTextEdited: root.controller.email = text
        onAccepted: root.controller.doneTapped()
        Accessible.role: Accessible.EditableText
        Accessible.name: title.text

        Tappable {
            id: clear
            objectName: "emailClearButton"
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            width: SheetTheme.clearButtonSize
            height: SheetTheme.clearButtonSize
            visible: field.activeFocus && field.length > 0
            focusPolicy: Qt.NoFocus // the field keeps the keyboard
            text: Texts.text("zenvor_clear_text_a11y", "Clear text")
            onClicked: {
                field.clear()
                root.controller.email = ""
            }

            SymbolItem {
                anchors.fill: parent
                name: "xmark.circle.fill"
                color: SheetTheme.secondaryText
            }
        }
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
