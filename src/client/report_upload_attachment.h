#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

namespace zenvor {

/// One file to go with a report. The bytes are shared, never copied or looked at.
struct ReportUploadAttachment
{
    QByteArray data;
    QString mimeType;
    /// "screenshot" for every image, "video" for every video.
    QString kind;
};

/// The labels under which an attachment is announced to the service.
struct AttachmentLabels
{
    QString kind;
    QString mimeType;

    friend bool operator==(const AttachmentLabels &, const AttachmentLabels &) = default;
};

/// Whether \a mimeType, in lower case, is one of the images or videos that the service takes.
bool isAllowedScreenshotMimeType(QStringView mimeType);
bool isAllowedVideoMimeType(QStringView mimeType);

/// The MIME type that a file name's extension stands for, in any letter case; nothing for those that
/// the service does not take.
std::optional<QString> attachmentMimeType(QStringView extension);

/// The kind of an attachment with an allowed MIME type.
QString attachmentKind(QStringView mimeType);

/// What \a attachment is sent as. Labels that the service does not know fall back to its commonest
/// types; a video declared as something else stays a video.
AttachmentLabels normalizeAttachment(const ReportUploadAttachment &attachment);

} // namespace zenvor
