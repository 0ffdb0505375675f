#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <optional>

class QUrl;

namespace zenvor {

/// An attachment that the host has handed in ahead of the next flow.
struct PendingAttachment
{
    QByteArray data;
    QString mimeType;
    /// "screenshot" for every image, "video" for every video.
    QString kind;
    /// The picture, not larger than any screen shows it. Null for videos.
    QImage previewImage;
};

/// What waits for the next flow, in the order in which it came, and the rules of what may. To set is to empty
/// the list and then to add; what cannot be added leaves the list as it then is.
class PendingAttachments
{
public:
    bool add(const QImage &image, double compressionQuality);
    bool add(const QByteArray &data, const QString &mimeType);
    /// Without a MIME type, the extension of the file's name decides.
    bool addFile(const QUrl &url, const std::optional<QString> &mimeType);

    bool set(const QImage &image, double compressionQuality);
    /// Without data this only empties the list, and succeeds.
    bool set(const QByteArray &data, const QString &mimeType);
    bool setFile(const QUrl &url, const std::optional<QString> &mimeType);
    /// Returns how many were taken.
    int setFiles(const QList<QUrl> &urls);
    void clear();

    /// All of them; none are left here.
    QList<PendingAttachment> take();

private:
    QList<PendingAttachment> m_attachments;
};

} // namespace zenvor
