pragma Singleton
import QtQuick
import Zenvor.Resources

QtObject {
    // Whole, so that nothing of the host's fonts or style is inherited.
    function make(pixelSize: int, weight: int): font {
        return Qt.font({
            family: Appearance.fontFamily,
            pixelSize: pixelSize,
            weight: weight,
            italic: false,
            underline: false,
            capitalization: Font.MixedCase,
            letterSpacing: 0,
            wordSpacing: 0
        })
    }
}
