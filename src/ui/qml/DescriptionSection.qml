import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources
import Zenvor.Screens

Rectangle {
    id: root

    required property FeedbackViewController controller
    required property FormScroll form

    implicitHeight: box.y + box.height + SheetTheme.descriptionBottom
    color: SheetTheme.section

    Label {
        id: title
        anchors {
            left: parent.left; leftMargin: SheetTheme.margin
            right: parent.right; rightMargin: SheetTheme.margin
            top: parent.top; topMargin: SheetTheme.descriptionTop
        }
        text: Texts.text("zenvor_description_title", "Description")
        font: SheetTypography.sectionTitle
        color: SheetTheme.primaryText
        horizontalAlignment: Text.AlignLeft
    }
    Flickable {
        id: box
        anchors {
            left: parent.left; leftMargin: SheetTheme.descriptionMargin
            right: parent.right; rightMargin: SheetTheme.descriptionMargin
            top: title.bottom; topMargin: SheetTheme.descriptionGap
        }
        height: SheetTheme.descriptionHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        Component.onCompleted: contentY = 0 // an empty text is scrolled to the padding above it otherwise

        T.TextArea.flickable: T.TextArea {
            id: area
            objectName: "messageTextView"
            padding: SheetTheme.margin - SheetTheme.descriptionMargin
            topPadding: SheetTheme.descriptionGap
            font: SheetTypography.fieldText
            color: SheetTheme.primaryText
            selectionColor: SystemColors.blue
            selectedTextColor: SheetTheme.mediaActionTint
            selectByMouse: !finger.active
            textFormat: TextEdit.PlainText
            // Lines without end take Qt the square of their length to break between words.
            wrapMode: root.controller.hasEndlessLine ? TextEdit.WrapAnywhere : TextEdit.Wrap
            readOnly: root.controller.isSending
            opacity: root.controller.isSending ? SheetTheme.disabledOpacity : 1
            text: root.controller.message
            onTextChanged: root.controller.message = text
            onActiveFocusChanged: activeFocus ? root.controller.textViewDidBeginEditing()
                                              : root.controller.textViewDidEndEditing()
            Keys.priority: Keys.BeforeItem // a tab would be a letter of the text
            Keys.onPressed: event => {
                if (event.matches(StandardKey.Paste))
                    root.controller.pasteIsComing()
                event.accepted = false
            }
            Keys.onTabPressed: nextItemInFocusChain().forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Accessible.role: Accessible.EditableText
            Accessible.name: title.text
            Accessible.description: placeholder.text
            Accessible.multiLine: true

            // A text field keeps the finger that touches it: what it holds need not be scrolled, the form may.
            PointHandler {
                id: finger

                property real startY: 0

                acceptedDevices: PointerDevice.TouchScreen
                onActiveChanged: if (active) startY = root.form.contentY
                onPointChanged: {
                    if (active && !box.interactive)
                        root.form.scrollTo(startY + point.scenePressPosition.y - point.scenePosition.y)
                }
            }
            Label {
                id: placeholder
                anchors { fill: parent; margins: area.padding; topMargin: area.topPadding }
                visible: root.controller.isMessagePlaceholderVisible
                text: root.controller.messagePlaceholder
                font: area.font
                color: SheetTheme.secondaryText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.ignored: true
            }
        }
    }
}
