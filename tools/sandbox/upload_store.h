#pragma once

#include "sandbox/upload.h"

#include <QCryptographicHash>
#include <QFile>
#include <QHash>
#include <QStringList>

#include <memory>
#include <optional>

namespace zenvor::sandbox {

/// Bytes on their way into the store: a temporary file that disappears with this object unless it is
/// handed to UploadStore::accept().
class IncomingUpload
{
public:
    explicit IncomingUpload(const QString &temporaryPath);
    ~IncomingUpload();
    Q_DISABLE_COPY_MOVE(IncomingUpload)

    void write(const QByteArray &bytes);
    qint64 size() const { return m_size; }
    const QByteArray &firstBytes() const { return m_firstBytes; }
    /// A failure of the file, once there was one.
    QString error() const { return m_error; }

private:
    friend class UploadStore;
    QFile m_file;
    QCryptographicHash m_md5{QCryptographicHash::Md5};
    QByteArray m_firstBytes;
    qint64 m_size = 0;
    QString m_error;
    bool m_isAccepted = false;
};

/// The uploads that belong to no report yet, in memory and in a folder: <id>.json is the state, <id>.data
/// the bytes. Every change is on the disk before the function returns.
class UploadStore
{
public:
    /// Creates the folder and reads what an earlier run left; \a notes names what had to be skipped.
    bool open(const QString &folder, QString *error, QStringList *notes);

    /// Null if the state cannot be written. The pointers stay valid until the next reserve() or remove().
    const Upload *reserve(const QString &owner, const QString &kind, const QString &mimeType, qint64 bytes);
    const Upload *find(const QString &id) const;
    std::unique_ptr<IncomingUpload> receive(const QString &id);
    /// Makes the received bytes those of the upload and gives it its ETag.
    bool accept(const QString &id, IncomingUpload &incoming);
    /// For an answer that was made to carry another ETag, or none.
    void setEtag(const QString &id, const QByteArray &etag);
    bool complete(const QString &id);
    QString dataPath(const QString &id) const;
    /// Forgets the upload, with its bytes if they are still here.
    void remove(const QString &id);

private:
    bool save(const Upload &upload) const;
    QString statePath(const QString &id) const;
    std::optional<Upload> load(const QString &path) const;

    QString m_folder;
    QHash<QString, Upload> m_uploads;
    quint64 m_received = 0;
};

/// Whether the first bytes of a file are what files of that MIME type begin with.
bool looksLike(const QString &mimeType, const QByteArray &firstBytes);

/// Random hexadecimal digits, two for each byte.
QString randomHex(int bytes);

} // namespace zenvor::sandbox
