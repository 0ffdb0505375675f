import QtQuick
import Zenvor.Screens

// Where the system has a picker of its own, this one is only what it lies over.
Screen {
    id: root

    required property MediaPickerViewController controller

    objectName: "mediaPicker"
    onLeaveRequested: root.controller.leave()

    Loader {
        id: picker
        source: "OtherFiles.qml"
        onStatusChanged: if (status === Loader.Error) root.controller.cancelTapped()
    }
    Connections {
        target: picker.item
        function onFilesChosen(files: var) { root.controller.filesChosen(files) }
        function onRejected() { root.controller.cancelTapped() }
    }
}
