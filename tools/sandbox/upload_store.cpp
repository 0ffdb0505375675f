#include "sandbox/upload_store.h"

#include "sandbox/field_reader.h"

#include <QDir>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QSaveFile>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype sniffedBytes = 16;

QJsonObject toJson(const Upload &upload)
{
    return {{u"id"_s, upload.id},
            {u"owner"_s, upload.owner},
            {u"kind"_s, upload.kind},
            {u"mime_type"_s, upload.mimeType},
            {u"bytes"_s, upload.bytes},
            {u"signature"_s, QString::fromLatin1(upload.signature)},
            {u"nonce"_s, QString::fromLatin1(upload.nonce)},
            {u"etag"_s, QString::fromLatin1(upload.etag)},
            {u"arrived"_s, upload.hasArrived},
            {u"completed"_s, upload.isCompleted}};
}

} // namespace

IncomingUpload::IncomingUpload(const QString &temporaryPath) : m_file(temporaryPath)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        m_error = m_file.errorString();
}

IncomingUpload::~IncomingUpload()
{
    if (!m_isAccepted)
        m_file.remove();
}

void IncomingUpload::write(const QByteArray &bytes)
{
    if (m_firstBytes.size() < sniffedBytes)
        m_firstBytes += bytes.left(sniffedBytes - m_firstBytes.size());
    m_size += bytes.size();
    m_md5.addData(bytes);
    if (m_error.isEmpty() && m_file.write(bytes) != bytes.size())
        m_error = m_file.errorString();
}

bool UploadStore::open(const QString &folder, QString *error, QStringList *notes)
{
    m_folder = folder;
    m_uploads.clear();
    QDir dir(folder);
    if (!dir.mkpath(u"."_s)) {
        *error = u"The folder %1 cannot be created."_s.arg(folder);
        return false;
    }
    const QStringList parts = dir.entryList({u"*.part"_s}, QDir::Files);
    for (const QString &part : parts)
        dir.remove(part);
    const QStringList states = dir.entryList({u"*.json"_s}, QDir::Files);
    for (const QString &state : states) {
        if (const auto upload = load(dir.filePath(state)))
            m_uploads.insert(upload->id, *upload);
        else
            *notes << u"skipped %1: it does not describe an upload"_s.arg(dir.filePath(state));
    }
    return true;
}

std::optional<Upload> UploadStore::load(const QString &path) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList mistakes;
    FieldReader reader(QJsonDocument::fromJson(file.readAll()).object(), {}, mistakes);
    Upload upload;
    upload.id = reader.text("id"_L1).value_or(QString());
    upload.owner = reader.text("owner"_L1).value_or(QString());
    upload.kind = reader.text("kind"_L1).value_or(QString());
    upload.mimeType = reader.text("mime_type"_L1).value_or(QString());
    upload.bytes = reader.integer("bytes"_L1).value_or(0);
    upload.signature = reader.text("signature"_L1).value_or(QString()).toLatin1();
    upload.nonce = reader.text("nonce"_L1).value_or(QString()).toLatin1();
    upload.etag = reader.text("etag"_L1).value_or(QString()).toLatin1();
    upload.hasArrived = reader.boolean("arrived"_L1).value_or(false);
    upload.isCompleted = reader.boolean("completed"_L1).value_or(false);
    const bool isWhole = mistakes.isEmpty() && path == statePath(upload.id)
        && (!upload.hasArrived || QFileInfo(dataPath(upload.id)).size() == upload.bytes);
    return isWhole ? std::optional(upload) : std::nullopt;
}

const Upload *UploadStore::reserve(const QString &owner, const QString &kind, const QString &mimeType,
                                   qint64 bytes)
{
    Upload upload;
    upload.id = randomHex(12);
    upload.owner = owner;
    upload.kind = kind;
    upload.mimeType = mimeType;
    upload.bytes = bytes;
    // Escapes that a client which takes the URL apart and puts it together again would not reproduce.
    upload.signature =
        (randomHex(6) + u"%2F"_s + randomHex(4) + u"%2B"_s + randomHex(4) + u"%3D"_s).toLatin1();
    upload.nonce = randomHex(8).toLatin1();
    if (!save(upload))
        return nullptr;
    return &*m_uploads.insert(upload.id, upload);
}

const Upload *UploadStore::find(const QString &id) const
{
    const auto found = m_uploads.constFind(id);
    return found == m_uploads.constEnd() ? nullptr : &*found;
}

std::unique_ptr<IncomingUpload> UploadStore::receive(const QString &id)
{
    return std::make_unique<IncomingUpload>(m_folder + u'/' + id + u".%1.part"_s.arg(++m_received));
}

bool UploadStore::accept(const QString &id, IncomingUpload &incoming)
{
    if (!incoming.m_error.isEmpty() || !m_uploads.contains(id))
        return false;
    Upload upload = m_uploads.value(id);
    upload.etag = '"' + incoming.m_md5.result().toHex() + '"';
    upload.hasArrived = true;
    incoming.m_file.close();
    QFile::remove(dataPath(id)); // the same bytes sent once more
    if (!incoming.m_file.rename(dataPath(id)))
        return false;
    incoming.m_isAccepted = true;
    m_uploads.insert(id, upload);
    return save(upload);
}

void UploadStore::setEtag(const QString &id, const QByteArray &etag)
{
    const auto upload = m_uploads.find(id);
    if (upload == m_uploads.end() || upload->etag == etag)
        return;
    upload->etag = etag;
    save(*upload);
}

bool UploadStore::complete(const QString &id)
{
    Upload &upload = m_uploads[id];
    upload.isCompleted = true;
    return save(upload);
}

void UploadStore::remove(const QString &id)
{
    QFile::remove(statePath(id));
    QFile::remove(dataPath(id));
    m_uploads.remove(id);
}

QString UploadStore::dataPath(const QString &id) const
{
    return m_folder + u'/' + id + u".data"_s;
}

QString UploadStore::statePath(const QString &id) const
{
    return m_folder + u'/' + id + u".json"_s;
}

bool UploadStore::save(const Upload &upload) const
{
    QSaveFile file(statePath(upload.id));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(QJsonDocument(toJson(upload)).toJson());
    return file.commit();
}

bool looksLike(const QString &mimeType, const QByteArray &firstBytes)
{
    if (mimeType == "image/jpeg"_L1)
        return firstBytes.startsWith("\xff\xd8\xff"_ba);
    if (mimeType == "image/png"_L1)
        return firstBytes.startsWith("\x89PNG\r\n\x1a\n"_ba);
    if (mimeType == "image/webp"_L1)
        return firstBytes.startsWith("RIFF"_ba) && firstBytes.mid(8, 4) == "WEBP"_ba;
    if (mimeType == "video/webm"_L1)
        return firstBytes.startsWith("\x1a\x45\xdf\xa3"_ba);
    const QByteArray atom = firstBytes.mid(4, 4);
    return atom == "ftyp"_ba
        || (mimeType == "video/quicktime"_L1
            && (atom == "moov"_ba || atom == "wide"_ba || atom == "mdat"_ba));
}

QString randomHex(int bytes)
{
    QByteArray random(bytes, Qt::Uninitialized);
    for (char &byte : random)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return QString::fromLatin1(random.toHex());
}

} // namespace zenvor::sandbox
