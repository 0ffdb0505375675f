import QtQuick
import Larder

Rectangle {
    radius: Theme.radius
    color: Theme.card
    border { width: 1; color: Theme.line }
}
