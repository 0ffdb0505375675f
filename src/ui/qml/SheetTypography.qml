pragma Singleton
import QtQuick
import Zenvor.Resources

QtObject {
    readonly property font headerTitle: Fonts.make(18, Font.DemiBold)
    readonly property int headerTitleSmallestSize: 10 // 0.55 of it
    readonly property font sectionTitle: Fonts.make(14, Font.DemiBold)
    readonly property font fieldText: Fonts.make(15, Font.Normal)
    readonly property font body: Fonts.make(15, Font.Normal)
    readonly property font helper: Fonts.make(12, Font.Normal)
    readonly property font helperStrong: Fonts.make(12, Font.DemiBold)
    readonly property font done: Fonts.make(17, Font.DemiBold)
    readonly property font frequencyLabel: Fonts.make(13, Font.DemiBold)
}
