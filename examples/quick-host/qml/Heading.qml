import QtQuick
import Larder

Text {
    textFormat: Text.PlainText
    color: Theme.text
    font { pixelSize: Theme.headingSize; weight: Font.DemiBold }
    wrapMode: Text.Wrap
}
