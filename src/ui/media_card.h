#pragma once

#include "client/report_upload_attachment.h"
#include "platform/task.h"

#include <QObject>
#include <QPointer>
#include <QVariant>

namespace zenvor {

/// One picture or video beside the screenshot, as the form shows it. Main thread.
class MediaCard : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isVideo READ isVideo CONSTANT)
    Q_PROPERTY(QVariant image READ image NOTIFY imageChanged)

public:
    /// Starts to decode a picture, on another thread.
    explicit MediaCard(const ReportUploadAttachment &attachment, QObject *parent);

    bool isVideo() const { return m_isVideo; }
    /// A QImage, no larger than the card shows it; nothing until it is decoded, and if it cannot be.
    QVariant image() const { return m_image; }

Q_SIGNALS:
    void imageChanged();

private:
    static Task<> decode(QPointer<MediaCard> card, QByteArray data);

    const bool m_isVideo;
    QVariant m_image;
};

} // namespace zenvor
