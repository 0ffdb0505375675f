#include "facade/presentation_flow.h"

#include "capture/screenshot_capturer.h"
#include "facade/top_view_controller.h"
#include "platform/host_views.h"
#include "platform/window.h"
#include "ui/category_dialog_view_controller.h"
#include "ui/feedback_view_controller.h"
#include "ui/presenters.h"

#include <algorithm>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// What the host has handed in, sorted into what the form takes.
FormAttachments sorted(QList<PendingAttachment> pending)
{
    FormAttachments attachments;
    const auto chosen = std::find_if(pending.cbegin(), pending.cend(), [](const auto &attachment) {
        return attachment.kind == "screenshot"_L1;
    });
    if (chosen != pending.cend()) {
        if (!chosen->previewImage.isNull())
            attachments.currentScreenshot = chosen->previewImage;
        attachments.currentScreenshotData = chosen->data;
        attachments.currentScreenshotMimeType = chosen->mimeType;
        pending.erase(chosen);
    }
    if (!attachments.currentScreenshot)
        attachments.currentScreenshot = ScreenshotCapturer::captureCurrentWindow();
    for (auto &attachment : pending)
        attachments.additionalAttachments.append(
            {std::move(attachment.data), std::move(attachment.mimeType), std::move(attachment.kind)});
    return attachments;
}

// The view in \a window that a screen lies over; null without a window or where there is no way to show one.
QObject *topView(QWindow *window)
{
    const auto *presenter = presenterFor(window);
    return presenter ? topViewController(presenter->hostViews(), presenter->hostViews().rootView(window))
                     : nullptr;
}

// False, with nothing shown, if the window is gone or cannot be shown over.
bool show(ViewController &screen, ModalPresentationStyle style, QWindow *window)
{
    auto *presenter = presenterFor(window);
    return presenter && screen.present(*presenter, style, true, window);
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
    auto *const window = keyWindow();
    auto *const presenter = topView(window);
    if (!presenter) {
        m_logger.error("Presentation failed: topViewController could not be found."_L1);
        return;
    }
    m_isPresenting = true;
    PresentedItems items{*configuration, *reportClient, presenter, window, sorted(pendingAttachments.take())};
    m_logger.info("Presenting category dialog."_L1);
    presentCategoryDialog(std::move(items));
}

void PresentationFlow::presentCategoryDialog(PresentedItems items)
{
    const auto dialog = std::make_shared<CategoryDialogViewController>();
    auto *const window = items.window.data();
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
    if (!show(*dialog, ModalPresentationStyle::OverFullScreen, window))
        m_isPresenting = false; // nothing is on screen that could clear it
}

void PresentationFlow::presentFeedbackSheet(FeedbackCategory category, PresentedItems items)
{
    const auto end = [this] {
        m_isPresenting = false;
    };
    const auto form = std::make_shared<FeedbackViewController>(std::move(items.configuration),
                                                               std::move(items.reportClient), category,
                                                               std::move(items.attachments), end);
    form->onHostLost = end;
    m_logger.info("Presenting feedback sheet for category."_L1);
    if (!show(*form, ModalPresentationStyle::PageSheet, items.window))
        end();
}

} // namespace zenvor
