pragma ComponentBehavior: Bound
import QtQuick
import Zenvor.Resources
import Zenvor.Screens

// The tools, in as many rows as they need. They can be put away: the picture goes on behind them.
FocusScope {
    id: root

    required property ScreenshotEditorViewController controller
    readonly property ToolPalette tools: controller.tools
    property bool isOpen: true

    readonly property int columns: {
        const fitting = Math.max(1, Math.floor((width - 2 * EditorTheme.palettePadding) / EditorTheme.toolSize))
        return fitting >= 16 ? 16 : fitting >= 8 ? 8 : fitting
    }

    implicitHeight: card.height
    Accessible.role: Accessible.Grouping
    Accessible.name: Texts.text("zenvor_tools_a11y", "Drawing tools")
    opacity: controller.drawing.isDrawing ? EditorTheme.drawingOpacity : 1

    Rectangle {
        id: card

        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom }
        width: root.isOpen ? flow.width + 2 * EditorTheme.palettePadding : toggle.width
        height: toggle.height + (root.isOpen ? flow.height + EditorTheme.palettePadding : 0)
        radius: Math.min(EditorTheme.paletteRadius, height / 2)
        color: EditorTheme.palette
        border { width: 1; color: EditorTheme.paletteBorder }

        // What is beside the buttons draws nothing.
        MouseArea {
            anchors.fill: parent
            preventStealing: true
        }

        Tappable {
            id: toggle
            objectName: "toolPickerToggle"
            anchors { horizontalCenter: parent.horizontalCenter; top: parent.top }
            width: EditorTheme.toggleWidth
            height: EditorTheme.toggleHeight
            focusRadius: height / 2
            text: root.isOpen ? Texts.text("zenvor_hide_tools_a11y", "Hide tools") : Texts.text("zenvor_show_tools_a11y", "Show tools")
            onClicked: root.isOpen = !root.isOpen

            SymbolItem {
                anchors.centerIn: parent
                width: EditorTheme.toggleSymbolSize
                height: EditorTheme.toggleSymbolSize
                name: root.isOpen ? "chevron.down" : "chevron.up"
                color: EditorTheme.secondaryText
            }
        }

        Flow {
            id: flow

            anchors { horizontalCenter: parent.horizontalCenter; top: toggle.bottom }
            width: root.columns * EditorTheme.toolSize
            visible: root.isOpen

            ToolButton {
                objectName: "penTool"
                tool: ToolPalette.Pen
                symbol: "pencil.tip"
                text: Texts.text("zenvor_pen_a11y", "Pen")
            }
            ToolButton {
                objectName: "markerTool"
                tool: ToolPalette.Marker
                symbol: "highlighter"
                text: Texts.text("zenvor_marker_a11y", "Marker")
            }
            ToolButton {
                objectName: "eraserTool"
                tool: ToolPalette.Eraser
                symbol: "eraser.fill"
                text: Texts.text("zenvor_eraser_a11y", "Eraser")
            }

            Repeater {
                model: [Texts.text("zenvor_thin_line_a11y", "Thin line"), Texts.text("zenvor_medium_line_a11y", "Medium line"), Texts.text("zenvor_thick_line_a11y", "Thick line")]

                PaletteChoice {
                    id: widthChoice

                    required property int index
                    required property string modelData

                    objectName: "widthChoice"
                    text: modelData
                    checked: root.tools.widthIndex === index
                    onClicked: root.tools.widthIndex = index
                    isMarked: checked

                    Rectangle {
                        anchors.centerIn: parent
                        width: EditorTheme.lineLength
                        height: 2 * (widthChoice.index + 1) + (widthChoice.index > 1 ? 3 : 0)
                        radius: height / 2
                        color: EditorTheme.primaryText
                    }
                }
            }

            HistoryButton {
                objectName: "undoButton"
                enabled: root.controller.drawing.canUndo
                symbol: Texts.isRightToLeft() ? "arrow.uturn.forward" : "arrow.uturn.backward"
                text: Texts.text("zenvor_undo_a11y", "Undo")
                onClicked: root.controller.undoTapped()
            }
            HistoryButton {
                objectName: "redoButton"
                enabled: root.controller.drawing.canRedo
                symbol: Texts.isRightToLeft() ? "arrow.uturn.backward" : "arrow.uturn.forward"
                text: Texts.text("zenvor_redo_a11y", "Redo")
                onClicked: root.controller.redoTapped()
            }

            Repeater {
                model: root.tools.colorNames

                PaletteChoice {
                    id: swatch

                    required property int index
                    required property string modelData

                    objectName: "colorSwatch"
                    text: modelData
                    checked: root.tools.colorIndex === index
                    onClicked: root.tools.colorIndex = index

                    Rectangle {
                        anchors.centerIn: parent
                        width: EditorTheme.ringSize
                        height: width
                        radius: width / 2
                        visible: swatch.checked
                        color: "transparent"
                        border { width: EditorTheme.ringWidth; color: EditorTheme.primaryText }
                    }
                    Rectangle {
                        anchors.centerIn: parent
                        width: EditorTheme.swatchSize
                        height: width
                        radius: width / 2
                        color: root.tools.colors[swatch.index]
                        border { width: 1; color: EditorTheme.swatchBorder }
                    }
                }
            }
        }
    }

    component ToolSymbol: SymbolItem {
        anchors.centerIn: parent
        width: EditorTheme.symbolSize
        height: EditorTheme.symbolSize
        color: EditorTheme.primaryText
    }

    component HistoryButton: Tappable {
        id: historyButton

        required property string symbol

        implicitWidth: EditorTheme.toolSize
        implicitHeight: EditorTheme.toolSize
        focusRadius: EditorTheme.toolRadius

        ToolSymbol {
            name: historyButton.symbol
            opacity: historyButton.enabled ? (historyButton.down ? EditorTheme.pressedOpacity : 1) : EditorTheme.disabledOpacity
        }
    }

    component ToolButton: PaletteChoice {
        id: toolButton

        required property int tool
        required property string symbol

        checked: root.tools.tool === tool
        onClicked: root.tools.tool = tool
        isMarked: checked

        ToolSymbol {
            name: toolButton.symbol
            opacity: toolButton.down ? EditorTheme.pressedOpacity : 1
        }
    }
}
