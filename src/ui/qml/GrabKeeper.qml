import QtQuick
import Zenvor.Resources

// A Flickable lets go of its claim at every press; this renews it before a handler of the host's sees the movement.
PointHandler {
    id: root

    required property Flickable flickable

    target: null
    onPointChanged: if (active) PointerGrabs.keep(flickable)
}
