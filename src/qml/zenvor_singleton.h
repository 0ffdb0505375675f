#pragma once

#include <zenvor/zenvor.h>

#include <QImage>
#include <QObject>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace zenvor {

/// Zenvor::shared() as the QML singleton "Zenvor" of the module of that name. Each engine has one of its
/// own, without any state.
class ZenvorSingleton : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Zenvor)
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE void configure(const QString &token, bool shakeToOpenEnabled);
    Q_INVOKABLE void stop();
    Q_INVOKABLE void present();

    /// \a image as item.grabToImage() gives it with its "image".
    Q_INVOKABLE bool setPendingAttachment(const QImage &image, double compressionQuality);
    Q_INVOKABLE bool addPendingAttachment(const QImage &image, double compressionQuality);
    /// \a data as an ArrayBuffer (the "buffer" of a typed array); anything else is refused. To set null or
    /// undefined only empties the list.
    Q_INVOKABLE bool setPendingAttachmentData(const QVariant &data, const QString &mimeType);
    Q_INVOKABLE bool addPendingAttachmentData(const QVariant &data, const QString &mimeType);
    Q_INVOKABLE bool setPendingAttachmentFile(const QUrl &url);
    Q_INVOKABLE bool setPendingAttachmentFile(const QUrl &url, const QString &mimeType);
    Q_INVOKABLE bool addPendingAttachmentFile(const QUrl &url);
    Q_INVOKABLE bool addPendingAttachmentFile(const QUrl &url, const QString &mimeType);
    Q_INVOKABLE int setPendingAttachmentFiles(const QList<QUrl> &urls);
    Q_INVOKABLE void clearPendingAttachment();
    Q_INVOKABLE void clearPendingAttachments();
};

} // namespace zenvor
