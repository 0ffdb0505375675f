#pragma once

#include "client/report_upload_attachment.h"
#include "platform/task.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

#include <memory>

namespace zenvor {

class AttachmentFile;

/// One picture or video beside the screenshot, as the form shows it. Main thread.
class MediaCard : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isVideo READ isVideo CONSTANT)
    Q_PROPERTY(QVariant image READ image NOTIFY imageChanged)

public:
    /// Starts to decode the picture, or one of the video, on another thread.
    explicit MediaCard(const ReportUploadAttachment &attachment, QObject *parent);
    ~MediaCard() override;

    bool isVideo() const { return m_isVideo; }
    /// A QImage, no larger than the card shows it; nothing until it is decoded, and if it cannot be.
    QVariant image() const { return m_image; }
    /// Of a video; gone with this card and those who still use it. Null for a picture.
    const std::shared_ptr<AttachmentFile> &file() const { return m_file; }

Q_SIGNALS:
    void imageChanged();

private:
    static Task<> decode(QPointer<MediaCard> card, QByteArray data);
    static Task<> decodeVideo(QPointer<MediaCard> card, std::shared_ptr<AttachmentFile> file);
    void show(const QImage &image);

    const bool m_isVideo;
    const std::shared_ptr<AttachmentFile> m_file;
    QVariant m_image;
};

} // namespace zenvor
