pragma Singleton
import QtQuick
import Zenvor.Resources

// The colours that a system gives its applications.
QtObject {
    readonly property color label: Appearance.isDark ? "#ffffff" : "#000000"
    readonly property color secondaryLabel: Appearance.isDark ? "#99ebebf5" : "#993c3c43"
    readonly property color background: Appearance.isDark ? "#000000" : "#ffffff"
    readonly property color secondaryBackground: Appearance.isDark ? "#1c1c1e" : "#f2f2f7"
    readonly property color gray: "#8e8e93"
    readonly property color blue: Appearance.isDark ? "#0a84ff" : "#007aff"
    readonly property color chromeMaterial: Appearance.isDark ? "#c8202124" : "#c8f7f7f7"
}
