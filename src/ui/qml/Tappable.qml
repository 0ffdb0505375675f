import QtQuick
import QtQuick.Templates as T
import Zenvor.Resources

// What can be tapped: by touch, mouse, keyboard or an assistive tool.
T.AbstractButton {
    id: root

    property real focusRadius: 0
    readonly property real touchTarget: 44

    // However small it is drawn, a finger finds it.
    readonly property real reachX: Math.max(0, (touchTarget - width) / 2)
    readonly property real reachY: Math.max(0, (touchTarget - height) / 2)
    containmentMask: QtObject {
        function contains(point: point): bool {
            return point.x >= -root.reachX && point.x < root.width + root.reachX
                && point.y >= -root.reachY && point.y < root.height + root.reachY
        }
    }

    focusPolicy: Qt.TabFocus
    Accessible.role: checkable ? Accessible.CheckBox : Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.press()
    Keys.onReturnPressed: event => root.pressByKey(event)
    Keys.onEnterPressed: event => root.pressByKey(event)
    Component.onCompleted: PointerGrabs.keep(root)

    function press() {
        if (root.enabled)
            root.clicked()
    }
    function pressByKey(event: var) {
        if (!event.isAutoRepeat)
            root.press()
    }

    Rectangle {
        anchors.fill: parent
        visible: root.visualFocus
        color: "transparent"
        border { width: 2; color: SystemColors.blue }
        radius: root.focusRadius
    }
}
