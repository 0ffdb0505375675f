#include "facade/presentation_flow.h"

#include "capture/screenshot_capturer.h"
#include "platform/window.h"
#include "ui/category_dialog_view_controller.h"
#include "ui/quick_presenter.h"

#include <algorithm>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// What the host has handed in, sorted into what the screens take.
void takeAttachments(QList<PendingAttachment> pending, PresentedItems &items)
{
    const auto chosen = std::find_if(pending.cbegin(), pending.cend(), [](const auto &attachment) {
        return attachment.kind == "screenshot"_L1;
    });
    if (chosen != pending.cend()) {
        if (!chosen->previewImage.isNull())
            items.screenshot = chosen->previewImage;
        items.screenshotData = chosen->data;
        items.screenshotMimeType = chosen->mimeType;
        pending.erase(chosen);
    }
    if (!items.screenshot)
        items.screenshot = ScreenshotCapturer::captureCurrentWindow();
    for (auto &attachment : pending)
        items.additionalAttachments.append(
            {std::move(attachment.data), std::move(attachment.mimeType), std::move(attachment.kind)});
}

} // namespace

void PresentationFlow::presentInternal(const std::optional<ZenvorConfiguration> &configuration,
                                       const std::optional<ReportClient> &reportClient,
                                       PendingAttachments &pendingAttachments)
{
    if (m_isPresenting) {
        m_logger.info("Presentation skipped: already presenting."_L1);
        return;
    }
    if (!configuration || !reportClient) {
        m_logger.error("Presentation failed: Zenvor not configured."_L1);
        return;
    }
    auto *presenter = topViewController();
    if (!presenter) {
        m_logger.error("Presentation failed: topViewController could not be found."_L1);
        return;
    }
    m_isPresenting = true;
    PresentedItems items{.configuration = *configuration,
                         .reportClient = *reportClient,
                         .presenter = presenter,
                         .screenshot = {},
                         .screenshotData = {},
                         .screenshotMimeType = {},
                         .additionalAttachments = {}};
    takeAttachments(pendingAttachments.take(), items);
    m_logger.info("Presenting category dialog."_L1);
    presentCategoryDialog(std::move(items));
}

QWindow *PresentationFlow::topViewController()
{
    auto *window = keyWindow();
    return QuickPresenter::shared().canShowOver(window) ? window : nullptr;
}

void PresentationFlow::presentCategoryDialog(PresentedItems items)
{
    const auto dialog = std::make_shared<CategoryDialogViewController>();
    auto *const window = items.presenter.data();
    dialog->onSelect = [this, items = std::move(items)](FeedbackCategory category) {
        if (items.presenter)
            presentFeedbackSheet(category, items);
        else
            m_isPresenting = false;
    };
    dialog->onCancel = [this] {
        m_logger.info("Category dialog cancelled."_L1);
        m_isPresenting = false;
    };
    dialog->onHostLost = [this] {
        m_isPresenting = false;
    };
    if (!dialog->present(QuickPresenter::shared(), ModalPresentationStyle::OverFullScreen, true, window))
        m_isPresenting = false; // nothing is on screen that could clear it
}

void PresentationFlow::presentFeedbackSheet(FeedbackCategory, PresentedItems)
{
    m_isPresenting = false;
}

} // namespace zenvor
