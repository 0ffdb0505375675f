import QtQuick
import Zenvor.Screens

Separator {
    color: SheetTheme.separator
}
