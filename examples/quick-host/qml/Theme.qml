pragma Singleton
import QtQuick

QtObject {
    property bool dark: false

    readonly property color window: dark ? "#17191B" : "#F6F4EF"
    readonly property color bar: dark ? "#1F2225" : "#FFFFFF"
    readonly property color card: dark ? "#24282B" : "#FFFFFF"
    readonly property color line: dark ? "#383D41" : "#DFDBD2"
    readonly property color pressed: dark ? "#33383C" : "#ECE8DF"
    readonly property color text: dark ? "#F1EFEA" : "#22251F"
    readonly property color quietText: dark ? "#A5A8A4" : "#6C6F67"
    readonly property color accent: dark ? "#7FBF8A" : "#2F7A45"
    readonly property color accentText: dark ? "#10210F" : "#FFFFFF"
    readonly property color track: dark ? "#4A5054" : "#CFCBC1"
    readonly property color shade: "#000000"

    readonly property int margin: 16
    readonly property int gap: 12
    readonly property int smallGap: 6
    readonly property int radius: 12
    readonly property int smallRadius: 8
    readonly property int barHeight: 52
    readonly property int touchHeight: 44
    readonly property int markWidth: 3
    readonly property int markGap: 3
    readonly property int markLength: 18
    readonly property int tileHeight: 132
    readonly property int coverHeight: 200
    readonly property int cardWidth: 280
    readonly property int readingWidth: 640
    readonly property int wideFrom: 720
    readonly property int dialogWidth: 320
    readonly property int menuWidth: 260

    readonly property int titleSize: 20
    readonly property int headingSize: 17
    readonly property int textSize: 15
    readonly property int smallSize: 13
}
