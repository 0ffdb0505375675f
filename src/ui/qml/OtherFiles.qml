import QtQuick
import QtQuick.Dialogs
import QtCore
import Zenvor.Resources

// The dialog for files that the system has, or Qt where it has none.
FileDialog {
    id: root

    signal filesChosen(files: var)

    objectName: "otherFiles"
    fileMode: FileDialog.OpenFiles
    // The last one is, on some systems, what opens the library of photos.
    currentFolder: {
        const folders = [...StandardPaths.standardLocations(StandardPaths.PicturesLocation)]
        return folders[folders.length - 1]
    }
    nameFilters: {
        const patterns = "*.png *.jpg *.jpeg *.webp *.heic *.heif *.gif *.bmp *.tif *.tiff *.mp4 *.m4v *.mov *.webm *.mkv *.avi *.3gp"
        const media = Texts.text("zenvor_picker_a11y", "Photos and videos")
        const all = Texts.text("zenvor_all_files", "All files")
        return [media + " (" + patterns + " " + patterns.toUpperCase() + ")", all + " (*)"] // cameras write capitals
    }
    Component.onCompleted: open()
    Component.onDestruction: close()
    onAccepted: root.filesChosen(root.selectedFiles)
}
