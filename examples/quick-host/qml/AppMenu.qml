pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls.Basic
import Larder
import Zenvor

Menu {
    id: root

    /// What "Add this page to the report" adds.
    required property Item page

    padding: 1
    background: Card {
        implicitWidth: Theme.menuWidth
        radius: Theme.smallRadius
    }

    MenuItem {
        objectName: "feedbackMenuItem"
        text: qsTr("Send feedback")
        enabled: Feedback.isAvailable
        onTriggered: Zenvor.present()
    }
    MenuItem {
        objectName: "attachMenuItem"
        text: qsTr("Add this page to the report")
        enabled: Feedback.isAvailable
        // The library keeps it until the next report.
        onTriggered: root.page.grabToImage(picture => Zenvor.addPendingAttachment(picture.image, 0.9))
    }
    MenuSeparator {}
    MenuItem {
        objectName: "shakeMenuItem"
        text: qsTr("Shake")
        enabled: Feedback.isAvailable
        onTriggered: Feedback.shake()
    }
}
