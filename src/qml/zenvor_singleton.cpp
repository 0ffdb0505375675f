#include "qml/zenvor_singleton.h"

namespace zenvor {

void ZenvorSingleton::configure(const QString &token, bool shakeToOpenEnabled)
{
    Zenvor::shared().configure(token, shakeToOpenEnabled);
}

void ZenvorSingleton::stop()
{
    Zenvor::shared().stop();
}

void ZenvorSingleton::present()
{
    Zenvor::shared().present();
}

bool ZenvorSingleton::setPendingAttachment(const QImage &image, double compressionQuality)
{
    return Zenvor::shared().setPendingAttachment(image, compressionQuality);
}

bool ZenvorSingleton::addPendingAttachment(const QImage &image, double compressionQuality)
{
    return Zenvor::shared().addPendingAttachment(image, compressionQuality);
}

bool ZenvorSingleton::setPendingAttachmentData(const QVariant &data, const QString &mimeType)
{
    if (data.isNull())
        return Zenvor::shared().setPendingAttachmentData({}, mimeType);
    Zenvor::shared().clearPendingAttachments();
    return addPendingAttachmentData(data, mimeType);
}

bool ZenvorSingleton::addPendingAttachmentData(const QVariant &data, const QString &mimeType)
{
    // A text or a number would convert to bytes as well.
    return data.metaType() == QMetaType::fromType<QByteArray>()
        && Zenvor::shared().addPendingAttachmentData(data.toByteArray(), mimeType);
}

bool ZenvorSingleton::setPendingAttachmentFile(const QUrl &url)
{
    return Zenvor::shared().setPendingAttachmentFile(url);
}

bool ZenvorSingleton::setPendingAttachmentFile(const QUrl &url, const QString &mimeType)
{
    return Zenvor::shared().setPendingAttachmentFile(url, mimeType);
}

bool ZenvorSingleton::addPendingAttachmentFile(const QUrl &url)
{
    return Zenvor::shared().addPendingAttachmentFile(url);
}

bool ZenvorSingleton::addPendingAttachmentFile(const QUrl &url, const QString &mimeType)
{
    return Zenvor::shared().addPendingAttachmentFile(url, mimeType);
}

int ZenvorSingleton::setPendingAttachmentFiles(const QList<QUrl> &urls)
{
    return Zenvor::shared().setPendingAttachmentFiles(urls);
}

void ZenvorSingleton::clearPendingAttachment()
{
    Zenvor::shared().clearPendingAttachment();
}

void ZenvorSingleton::clearPendingAttachments()
{
    Zenvor::shared().clearPendingAttachments();
}

} // namespace zenvor
