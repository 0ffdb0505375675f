pragma Singleton
import QtQuick
import Zenvor.Resources

// What the picker and the player of videos look like. The player is dark, whatever the app is.
QtObject {
    readonly property color chosen: SystemColors.blue
    readonly property color onPicture: "#ffffff"
    readonly property color shade: Qt.rgba(0, 0, 0, 0.55)
    readonly property color playerBackground: "#000000"
    readonly property color playerText: "#ffffff"
    readonly property color sliderTrack: Qt.rgba(1, 1, 1, 0.35)

    readonly property font action: Fonts.make(17, Font.Normal)
    readonly property font strongAction: Fonts.make(17, Font.DemiBold)
    readonly property font title: Fonts.make(17, Font.DemiBold)
    readonly property font chipText: Fonts.make(14, Font.Medium)
    readonly property font name: Fonts.make(12, Font.Normal)
    readonly property font message: Fonts.make(15, Font.Normal)
    readonly property font time: Fonts.make(13, Font.Normal)

    readonly property real margin: 16
    readonly property real barHeight: 54
    readonly property real actionPadding: 8
    readonly property real chipHeight: 32
    readonly property real chipPadding: 14
    readonly property real chipGap: 8
    readonly property real placesHeight: 48
    readonly property real cellSize: 112 // at least
    readonly property int fewestColumns: 3
    readonly property real cellGap: 2
    readonly property real badgeSize: 24
    readonly property real badgeInset: 6
    readonly property real symbolSize: 36
    readonly property real smallSymbolSize: 16
    readonly property real disabledOpacity: 0.35
    readonly property real pressedOpacity: 0.3
    readonly property real buttonSize: 44
    readonly property real buttonSymbolSize: 19
    readonly property real sliderHeight: 4
    readonly property real sliderHandle: 16
    readonly property real timeWidth: 44
    readonly property int seekStep: 5000 // ms
}
