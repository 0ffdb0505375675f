#pragma once

#include <QByteArray>
#include <QString>

namespace zenvor::sandbox {

/// One upload from its reservation until a report takes it.
struct Upload
{
    QString id;
    QString owner; ///< digest of the token it was issued to
    QString kind;
    QString mimeType;
    qint64 bytes = 0;
    QByteArray signature; ///< of the upload URL, as it stands there (percent-encoded)
    QByteArray nonce; ///< value of the header x-zenvor-upload
    QByteArray etag; ///< as the answer to the PUT gave it, quotes and all; empty: it gave none
    bool hasArrived = false;
    bool isCompleted = false;

    QByteArray target() const { return "/storage/" + id.toLatin1() + "?signature=" + signature; }
};

} // namespace zenvor::sandbox
