import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Larder
import Zenvor

Page {
    id: root

    title: qsTr("Settings")
    background: null

    ColumnLayout {
        anchors { top: parent.top; horizontalCenter: parent.horizontalCenter; topMargin: Theme.margin }
        width: Math.min(parent.width - 2 * Theme.margin, Theme.readingWidth)
        spacing: Theme.margin

        Card {
            Layout.fillWidth: true
            implicitHeight: looks.implicitHeight + 2 * Theme.gap

            ColumnLayout {
                id: looks
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.gap; leftMargin: Theme.margin }
                spacing: Theme.gap

                RowLayout {
                    Heading { text: qsTr("Dark"); Layout.fillWidth: true }
                    Switch {
                        objectName: "darkSwitch"
                        checked: Theme.dark
                        palette.dark: Theme.accent
                        onToggled: Theme.dark = checked
                        Accessible.name: qsTr("Dark")
                    }
                }
                RowLayout {
                    Heading { text: qsTr("Language"); Layout.fillWidth: true }
                    ComboBox {
                        objectName: "languageBox"
                        palette { dark: Theme.quietText; highlightedText: Theme.text }
                        textRole: "name"
                        valueRole: "code"
                        model: [
                            {"code": "en", "name": "English"},
                            {"code": "de", "name": "Deutsch"},
                            {"code": "ar", "name": "العربية"}
                        ]
                        // Before the first choice it is the system's, which may be none of these.
                        Component.onCompleted: currentIndex = Math.max(0, indexOfValue(Language.code))
                        onActivated: Language.code = currentValue
                        Accessible.name: qsTr("Language")
                    }
                }
                Text {
                    textFormat: Text.PlainText
                    text: qsTr("The feedback screens speak it if they have a table for it. The recipes stay in English.")
                    color: Theme.quietText
                    font.pixelSize: Theme.smallSize
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
            }
        }
        Card {
            Layout.fillWidth: true
            implicitHeight: feedback.implicitHeight + 2 * Theme.margin

            ColumnLayout {
                id: feedback
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: Theme.margin }
                spacing: Theme.gap

                Heading { text: qsTr("Feedback") }
                Text {
                    objectName: "feedbackState"
                    textFormat: Text.PlainText
                    text: Feedback.isAvailable
                        ? qsTr("Goes to %1. The menu, a shake of the device, or Ctrl+Shift+S opens it.").arg(Feedback.service)
                        : qsTr("Is off: start this app with --token, and with --service for a report service of your own. \"./dev demo\" does both.")
                    color: Theme.quietText
                    font.pixelSize: Theme.textSize
                    wrapMode: Text.Wrap
                    Layout.fillWidth: true
                }
                AppButton {
                    objectName: "feedbackButton"
                    text: qsTr("Send feedback")
                    highlighted: true
                    visible: Feedback.isAvailable
                    onClicked: Zenvor.present()
                }
            }
        }
    }
}
