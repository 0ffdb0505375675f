#include "editor/screenshot_editor_view_controller.h"

#include "editor/flattened_picture.h"

#include <utility>

namespace zenvor {

ScreenshotEditorViewController::ScreenshotEditorViewController(QImage image,
                                                               std::function<void(QImage)> saveHandler)
    : sourceImage(std::move(image))
    , onSave(std::move(saveHandler))
    , m_drawing(sourceImage.size())
{
}

void ScreenshotEditorViewController::cancelTapped()
{
    m_isLeaving = true;
    dismiss(true, {});
}

void ScreenshotEditorViewController::clearTapped()
{
    m_drawing.clear();
}

void ScreenshotEditorViewController::saveTapped()
{
    if (std::exchange(m_isLeaving, true)) // on its way out it can still be tapped
        return;
    onSave(flattened(sourceImage, m_drawing));
    dismiss(true, {});
}

} // namespace zenvor
