#pragma once

#include "editor/canvas_item.h"
#include "editor/screenshot_editor_view_controller.h"
#include "media/media_picker_view_controller.h"
#include "media/video_player_view_controller.h"
#include "ui/alert_view_controller.h"
#include "ui/category_dialog_view_controller.h"
#include "ui/feedback_view_controller.h"
#include "ui/keyboard_avoidance.h"
#include "ui/media_card.h"

#include <QtQml/qqml.h>

namespace zenvor {

// The view controllers, for the views that bind to them; they know nothing of QML themselves.
struct CategoryDialogViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::CategoryDialogViewController)
    QML_NAMED_ELEMENT(CategoryDialogViewController)
    QML_UNCREATABLE("made by the flow")
};

struct FeedbackViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::FeedbackViewController)
    QML_NAMED_ELEMENT(FeedbackViewController)
    QML_UNCREATABLE("made by the flow")
};

struct KeyboardAvoidanceType
{
    Q_GADGET
    QML_FOREIGN(zenvor::KeyboardAvoidance)
    QML_NAMED_ELEMENT(KeyboardAvoidance)
    QML_UNCREATABLE("made by the form")
};

struct MediaCardType
{
    Q_GADGET
    QML_FOREIGN(zenvor::MediaCard)
    QML_NAMED_ELEMENT(MediaCard)
    QML_UNCREATABLE("made by the form")
};

struct MediaPickerViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::MediaPickerViewController)
    QML_NAMED_ELEMENT(MediaPickerViewController)
    QML_UNCREATABLE("made by the form")
};

struct VideoPlayerViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::VideoPlayerViewController)
    QML_NAMED_ELEMENT(VideoPlayerViewController)
    QML_UNCREATABLE("made by the form")
};

struct AlertViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::AlertViewController)
    QML_NAMED_ELEMENT(AlertViewController)
    QML_UNCREATABLE("made by the screens")
};

struct ScreenshotEditorViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::ScreenshotEditorViewController)
    QML_NAMED_ELEMENT(ScreenshotEditorViewController)
    QML_UNCREATABLE("made by the form")
};

struct DrawingType
{
    Q_GADGET
    QML_FOREIGN(zenvor::Drawing)
    QML_NAMED_ELEMENT(Drawing)
    QML_UNCREATABLE("made by the editor")
};

struct ToolPaletteType
{
    Q_GADGET
    QML_FOREIGN(zenvor::ToolPalette)
    QML_NAMED_ELEMENT(ToolPalette)
    QML_UNCREATABLE("made by the editor")
};

struct CanvasItemType
{
    Q_GADGET
    QML_FOREIGN(zenvor::CanvasItem)
    QML_NAMED_ELEMENT(CanvasItem)
};

} // namespace zenvor
