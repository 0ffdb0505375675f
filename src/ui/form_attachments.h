#pragma once

#include "client/report_upload_attachment.h"

#include <QImage>
#include <QList>

namespace zenvor {

/// What goes with the report of a form: a screenshot, and further pictures and videos.
struct FormAttachments
{
    static constexpr int limit = 5;

    std::optional<QImage> currentScreenshot;
    /// The file that the screenshot is, once it is known.
    std::optional<QByteArray> currentScreenshotData;
    std::optional<QString> currentScreenshotMimeType;
    QList<ReportUploadAttachment> additionalAttachments;

    /// How many of the limit are taken.
    int usedCount() const;

    /// The screenshot as it is sent; made a JPEG and kept so if it is no file yet. Nothing without one, or if
    /// it cannot be made one. Takes some milliseconds the first time.
    std::optional<ReportUploadAttachment> resolvedScreenshotUploadPayload();

    /// All that is sent, the screenshot first.
    QList<ReportUploadAttachment> uploads();

    void removeScreenshot();
    /// Nothing if there is none at \a index.
    void removeAdditionalAttachment(qsizetype index);

    /// What the form says of them.
    QString helperText() const;
    QString addMediaTitle() const;
};

} // namespace zenvor
