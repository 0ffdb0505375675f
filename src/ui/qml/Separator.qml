import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// One physical pixel.
Rectangle {
    implicitHeight: 1 / Appearance.devicePixelRatio
    color: DialogTheme.separator
}
