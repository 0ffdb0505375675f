#pragma once

#include "client/report_upload_attachment.h"

#include <QImage>
#include <QList>

namespace zenvor {

/// What a user has added to a form.
struct PickedAttachment
{
    ReportUploadAttachment attachment;
    /// What can be shown of a picture that may become the screenshot.
    std::optional<QImage> image;
};

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

    /// The screenshot, if it is no file yet and has to be made one before it is sent.
    std::optional<QImage> screenshotToEncode() const;
    /// Keeps the file that the screenshot was made.
    void setEncodedScreenshot(QByteArray jpeg);

    /// Takes the place of the screenshot; it is made a file when it is sent.
    void setEditedScreenshot(QImage image);

    /// The screenshot as it is sent. Nothing without one, and while it is no file.
    std::optional<ReportUploadAttachment> screenshotUpload() const;

    /// Adds what there is room for. The first one with an image becomes the screenshot, if there is none.
    void applyPickedAttachments(QList<PickedAttachment> picked);

    void removeScreenshot();
    /// Nothing if there is none at \a index.
    void removeAdditionalAttachment(qsizetype index);

    /// What the form says of them.
    QString helperText() const;
    QString addMediaTitle() const;
};

} // namespace zenvor
