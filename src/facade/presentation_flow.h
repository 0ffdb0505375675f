#pragma once

#include "client/feedback_category.h"
#include "client/report_client.h"
#include "facade/pending_attachments.h"
#include "platform/logger.h"
#include "ui/form_attachments.h"

#include <QPointer>
#include <QWindow>

namespace zenvor {

class Presenter;

/// What one presentation takes along through its screens.
struct PresentedItems
{
    ZenvorConfiguration configuration;
    ReportClient reportClient;
    QPointer<QObject> presenter; ///< the view of the host that the screens lie over
    QPointer<QWindow> window; ///< and the window that shows it
    FormAttachments attachments;
};

/// The screens of one flow, one after the other, and the guard that there is one flow at a time. Main thread;
/// lives as long as the process.
class PresentationFlow
{
public:
    explicit PresentationFlow(Logger logger) : m_logger(std::move(logger)) {}

    /// Opens the category dialog over the host's top-most screen, with all that is in \a pendingAttachments,
    /// which is empty then. Nothing but a line in the log, and nothing taken, if a flow is open, if something
    /// of the configuration is missing, or without a window to open over.
    void presentInternal(const std::optional<ZenvorConfiguration> &configuration,
                         const std::optional<ReportClient> &reportClient,
                         PendingAttachments &pendingAttachments);

private:
    void presentCategoryDialog(PresentedItems items);
    void presentFeedbackSheet(FeedbackCategory category, PresentedItems items);

    const Logger m_logger;
    bool m_isPresenting = false;
};

} // namespace zenvor
