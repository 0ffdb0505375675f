#pragma once

#include "editor/drawing.h"
#include "editor/tool_palette.h"
#include "platform/view_controller.h"

#include <QVariant>

namespace zenvor {

/// Lets the user draw on a picture. For one presentation. Stores nothing and sends nothing.
class ScreenshotEditorViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(QVariant sourceImage READ sourceImageValue CONSTANT)
    Q_PROPERTY(zenvor::Drawing *drawing READ drawing CONSTANT)
    Q_PROPERTY(zenvor::ToolPalette *tools READ tools CONSTANT)

public:
    /// \a onSave is called once, when the user saves, with a picture of the area in which \a image was shown:
    /// its size in points times the pixels a point, transparent beside the picture. The editor is still there
    /// then, and goes. Not called when the user cancels.
    ScreenshotEditorViewController(QImage image, std::function<void(QImage)> onSave);

    const QImage sourceImage;
    const std::function<void(QImage)> onSave;

    QString viewName() const override { return QStringLiteral("ScreenshotEditor"); }

    QVariant sourceImageValue() const { return sourceImage; }
    Drawing *drawing() { return &m_drawing; }
    ToolPalette *tools() { return &m_tools; }

    Q_INVOKABLE void cancelTapped();
    /// Takes all strokes away. That cannot be undone.
    Q_INVOKABLE void clearTapped();
    Q_INVOKABLE void saveTapped();
    Q_INVOKABLE void undoTapped() { m_drawing.undo(); }
    Q_INVOKABLE void redoTapped() { m_drawing.redo(); }
    Q_INVOKABLE void leave() override { cancelTapped(); }

private:
    Drawing m_drawing;
    ToolPalette m_tools;
    bool m_isLeaving = false;
};

} // namespace zenvor
