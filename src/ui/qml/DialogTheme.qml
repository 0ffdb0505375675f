pragma Singleton
import QtQuick
import Zenvor.Resources

QtObject {
    readonly property color card: Appearance.isDark ? Qt.rgba(0.14, 0.15, 0.18, 1) : "#ffffff"
    readonly property color separator: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.14) : Qt.rgba(0.66, 0.71, 0.79, 0.62)
    readonly property color cardBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.10) : Qt.rgba(0, 0, 0, 0.06)
    readonly property color chipText: Appearance.isDark ? "#ffffff" : "#000000"
    readonly property color dim: Qt.rgba(0, 0, 0, 0.24)
    readonly property color pressedRow: Qt.alpha(SystemColors.gray, 0.12)

    readonly property font chipFont: Fonts.make(19, Font.DemiBold)
    readonly property font versionFont: Fonts.make(12, Font.Medium)
    readonly property int versionSmallestSize: 10 // 0.8 of it
    readonly property real versionSmallestScale: 0.86 // with the rounding of a font's size
    readonly property real pressedOpacity: 0.3
    readonly property real tapSlack: 10
    readonly property font titleFont: Fonts.make(18, Font.Normal)
    readonly property font subtitleFont: Fonts.make(14, Font.Normal)
    readonly property font cancelFont: Fonts.make(19, Font.Normal)

    readonly property real cardMargin: 20
    readonly property real cardRise: 8
    readonly property real cardRadius: 22
    readonly property real cardTopPadding: 18
    readonly property real margin: 24
    readonly property real headerHeight: 50
    readonly property real headerGap: 12
    readonly property real chipPadding: 16
    readonly property real versionGap: 12
    readonly property real rowHeight: 82
    readonly property real rowPadding: 10
    readonly property real rowSpacing: 12
    readonly property real iconSize: 22
    readonly property real textSpacing: 4
    readonly property real cancelHeight: 54
}
