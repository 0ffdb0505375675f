pragma Singleton
import QtQuick
import Zenvor.Resources

QtObject {
    readonly property color background: Appearance.isDark ? "#000000" : SystemColors.background
    readonly property color topBar: Appearance.isDark ? Qt.rgba(0, 0, 0, 0.45) : Qt.rgba(1, 1, 1, 0.76)
    readonly property color primaryText: Appearance.isDark ? "#ffffff" : SystemColors.label
    readonly property color secondaryText: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.78) : SystemColors.secondaryLabel
    readonly property color accent: SystemColors.blue

    readonly property color palette: Appearance.isDark ? Qt.rgba(0.17, 0.17, 0.18, 0.96) : Qt.rgba(0.97, 0.97, 0.97, 0.96)
    readonly property color paletteBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.20) : Qt.rgba(0, 0, 0, 0.12)
    readonly property color chosen: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.16) : Qt.rgba(0, 0, 0, 0.10)
    readonly property color swatchBorder: Appearance.isDark ? Qt.rgba(1, 1, 1, 0.35) : Qt.rgba(0, 0, 0, 0.25)

    readonly property font buttonFont: Fonts.make(16, Font.Medium)
    readonly property font saveFont: Fonts.make(16, Font.DemiBold)

    readonly property real pressedOpacity: 0.3
    readonly property real disabledOpacity: 0.35
    readonly property real drawingOpacity: 0.25

    readonly property real topBarHeight: 54
    readonly property real margin: 16
    readonly property real pictureGap: 8
    readonly property real buttonGap: 8

    readonly property real paletteMargin: 8
    readonly property real palettePadding: 4
    readonly property real paletteRadius: 18
    readonly property real toolSize: 44
    readonly property real toolRadius: 12
    readonly property real toolInset: 3
    readonly property real symbolSize: 22
    readonly property real swatchSize: 24
    readonly property real ringSize: 34
    readonly property real ringWidth: 2
    readonly property real lineLength: 22
    readonly property real toggleWidth: 64
    readonly property real toggleHeight: 20
    readonly property real toggleSymbolSize: 12
}
