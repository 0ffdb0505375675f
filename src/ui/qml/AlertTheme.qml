pragma Singleton
import QtQuick
import Zenvor.Resources

QtObject {
    readonly property color card: Appearance.isDark ? "#2c2c2e" : "#ffffff"
    readonly property color dim: Qt.rgba(0, 0, 0, 0.2)
    readonly property font titleFont: Fonts.make(17, Font.DemiBold)
    readonly property font messageFont: Fonts.make(13, Font.Normal)
    readonly property font buttonFont: Fonts.make(17, Font.DemiBold)
    readonly property real width: 270
    readonly property real radius: 14
    readonly property real padding: 16
    readonly property real margin: 20
    readonly property real gap: 4
    readonly property real buttonHeight: 44
    readonly property real pressedOpacity: 0.3
    readonly property real scrollStep: 40
}
