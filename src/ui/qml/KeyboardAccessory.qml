import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// A bar over the on-screen keyboard, which has no key of its own that closes it.
Rectangle {
    id: root

    signal doneTapped()

    objectName: "keyboardAccessory"
    color: SheetTheme.section

    SheetSeparator {
        width: parent.width
    }
    Tappable {
        id: done
        objectName: "doneButton"
        anchors { right: parent.right; rightMargin: SheetTheme.margin - padding; top: parent.top; bottom: parent.bottom }
        implicitWidth: label.implicitWidth + 2 * padding
        padding: SheetTheme.accessoryPadding
        focusPolicy: Qt.NoFocus // the field keeps the keyboard
        focusRadius: SheetTheme.frequencyRadius
        text: Texts.text("zenvor_done", "Done")
        onClicked: root.doneTapped()

        Label {
            id: label
            anchors.centerIn: parent
            text: done.text
            font: SheetTypography.done
            color: SystemColors.blue
            opacity: done.down ? SheetTheme.pressedOpacity : 1
            Accessible.ignored: true
        }
    }
}
