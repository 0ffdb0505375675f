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
            // A long one leaves the version the room that it cannot do without.
            width: Math.min(implicitWidth, root.width - 2 * DialogTheme.margin - 2 * DialogTheme.chipPadding
                            - DialogTheme.versionGap - version.implicitWidth * DialogTheme.versionSmallestScale)
            text: Texts.text("zenvor_need_help", "Need help?")
            font: DialogTheme.chipFont
            color: DialogTheme.chipText
        }
    }

    Label {
        id: version
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
