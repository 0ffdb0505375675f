import QtQuick
import Zenvor.Resources
import Zenvor.Screens

Item {
    id: root

    required property string versionText

    implicitHeight: DialogTheme.headerHeight

    Item {
        id: chip
        anchors { left: parent.left; leftMargin: DialogTheme.margin; top: parent.top }
        width: label.width + 2 * DialogTheme.chipPadding
        height: DialogTheme.headerHeight

        Label {
            id: label
            anchors { left: parent.left; leftMargin: DialogTheme.chipPadding; verticalCenter: parent.verticalCenter }
            // A long one leaves a third to the version.
            width: Math.min(implicitWidth, root.width * 2 / 3 - 2 * DialogTheme.chipPadding)
            text: Texts.text("zenvor_need_help", "Need help?")
            font: DialogTheme.chipFont
            color: DialogTheme.chipText
        }
    }

    Label {
        anchors {
            left: chip.right; leftMargin: DialogTheme.versionGap
            right: parent.right; rightMargin: DialogTheme.margin
            verticalCenter: chip.verticalCenter
        }
        text: root.versionText
        font: DialogTheme.versionFont
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: DialogTheme.versionSmallestSize
        color: SystemColors.secondaryLabel
        horizontalAlignment: Text.AlignRight
    }
}
