#pragma once

#include "client/report_client.h"
#include "platform/task.h"

#include <QImage>

namespace zenvor {

/// Of the JPEG files that pictures of the screen are sent as.
constexpr double screenshotQuality = 0.72;

/// \a image as a JPEG file, made on another thread; nothing if it cannot be made one.
Task<std::optional<QByteArray>> encodedScreenshot(QImage image);

/// Whether the service refuses the token for this app. A check that cannot be made refuses nothing.
Task<bool> isTokenRefused(ReportClient client, QString bundleId);

/// Sends a report. Returns the description of the failure, or nothing.
Task<std::optional<QString>> submitReport(ReportClient client, FeedbackReportPayload payload,
                                          QList<ReportUploadAttachment> attachments);

} // namespace zenvor
