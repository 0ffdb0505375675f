pragma Singleton
import QtQuick
import Zenvor.Resources

QtObject {
    readonly property color background: Appearance.isDark ? Qt.rgba(0.12, 0.13, 0.15, 1) : SystemColors.background
    readonly property color section: Appearance.isDark ? Qt.rgba(0.14, 0.15, 0.17, 1) : SystemColors.secondaryBackground
    readonly property color separator: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.12) : Qt.rgba(0.66, 0.71, 0.79, 0.62)
    readonly property color primaryText: SystemColors.label
    readonly property color secondaryText: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.55) : SystemColors.secondaryLabel
    readonly property color fieldBackground: Appearance.isDark ? Qt.rgba(0.16, 0.17, 0.20, 1) : SystemColors.gray6
    readonly property color accent: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.92) : SystemColors.label
    readonly property color controlFill: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.14) : Qt.rgba(0, 0, 0, 0.06)
    readonly property color controlBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.24) : Qt.rgba(0, 0, 0, 0.16)
    readonly property color headerButtonBackground: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.04) : Qt.rgba(0, 0, 0, 0.03)
    readonly property color headerButtonBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.16) : Qt.rgba(0, 0, 0, 0.12)
    readonly property color cardBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.10) : Qt.rgba(0, 0, 0, 0.08)
    readonly property color addMediaBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.18) : Qt.rgba(0, 0, 0, 0.14)
    readonly property color mediaPreviewBackground: Qt.rgba(0, 0, 0, Appearance.isDark ? 0.20 : 0.08)
    readonly property color mediaActionBackground: "#007aff"
    readonly property color mediaActionTint: "#ffffff"
    readonly property color strip: Qt.rgba(0, 0, 0, 0.24)

    readonly property real disabledOpacity: 0.35
    readonly property real pressedOpacity: 0.3

    readonly property real topGap: 44
    readonly property real cornerRadius: 10
    readonly property real greatestWidth: 640
    readonly property real margin: 24
    readonly property real swipeDistance: 120
    readonly property real swipeSlack: 10
    readonly property real headerHeight: 78
    readonly property real headerMargin: 22
    readonly property real headerButtonSize: 44
    readonly property real headerTitleGap: 10
    readonly property real headerSymbolSize: 19
    readonly property real emailTop: 14
    readonly property real emailGap: 8
    readonly property real emailHeight: 32
    readonly property real emailBottom: 22
    readonly property real descriptionTop: 14
    readonly property real descriptionGap: 6
    readonly property real descriptionMargin: 20
    readonly property real descriptionHeight: 90
    readonly property real descriptionBottom: 12
    readonly property real frequencyPadding: 10
    readonly property real frequencyGap: 6
    readonly property real frequencyHeight: 38
    readonly property real frequencyRadius: 9
    readonly property real chevronSize: 12
    readonly property real menuRowHeight: 44
    readonly property real menuMargin: 8
    readonly property real screenshotTop: 16
    readonly property real screenshotSize: 116
    readonly property real screenshotRadius: 16
    readonly property real screenshotInset: 8
    readonly property real pictureRadius: 12
    readonly property real mediaButtonSize: 24
    readonly property real mediaButtonInset: 6
    readonly property real mediaSymbolSize: 12
    readonly property real helperGap: 12
    readonly property real screenshotBottom: 14
    readonly property real stripGap: 12
    readonly property real stripHeight: 124
    readonly property real cardWidth: 116
    readonly property real cardSpacing: 12
    readonly property real videoSymbolSize: 36
    readonly property real contactTop: 14
    readonly property real contactBottom: 20
    readonly property real contactGap: 12
    readonly property real checkSize: 28
    readonly property real checkRadius: 8
    readonly property real checkBorder: 1.5
    readonly property real checkSymbolSize: 16
    readonly property real accessoryPadding: 12
    readonly property real revealMargin: 12
    readonly property real clearButtonSize: 18
    readonly property real addMediaGap: 10
    readonly property real addMediaRadius: 10
    readonly property real addMediaPaddingX: 12
    readonly property real addMediaPaddingY: 8
    readonly property real activityHeight: 40
    readonly property real activitySize: 20
}
