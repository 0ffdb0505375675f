#include "media/attachment_file.h"

#include "media/media_types.h"
#include "platform/awaitable_callback.h"
#include "platform/video.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QUuid>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr auto thumbnailPrefix = "zenvor-thumb-"_L1;
constexpr auto previewPrefix = "zenvor-preview-"_L1;

// Nothing if the user's setting for that folder leads nowhere, which Qt answers with an empty path.
std::optional<QString> temporaryPath(const QString &name)
{
    const auto folder = QDir::tempPath();
    return folder.isEmpty() ? std::nullopt : std::optional(folder + u'/' + name);
}

bool isOlderThanADay(const QFileInfo &file)
{
    return file.lastModified() < QDateTime::currentDateTime().addDays(-1);
}

void sweep()
{
    const auto folder = temporaryPath({});
    if (!folder)
        return;
    QDirIterator files(*folder, {thumbnailPrefix + u'*', previewPrefix + u'*'},
                       QDir::Files | QDir::NoSymLinks | QDir::Writable);
    while (files.hasNext()) {
        const auto file = files.nextFileInfo();
        if (isOlderThanADay(file))
            QFile::remove(file.filePath()); // those of other users stay: the folder is shared
    }
}

} // namespace

AttachmentFile::AttachmentFile(QByteArray data, QString mimeType)
    : m_data(std::move(data))
    , m_mimeType(std::move(mimeType))
{
}

AttachmentFile::~AttachmentFile()
{
    if (!m_path.isEmpty())
        QFile::remove(m_path);
}

Task<std::optional<QString>> AttachmentFile::path(Purpose purpose)
{
    const auto writing = [self = shared_from_this(), purpose] {
        return self->pathHere(purpose);
    };
    co_return co_await runOn(m_executor, writing);
}

Task<std::optional<QString>> AttachmentFile::pathHere(Purpose purpose)
{
    if (!QFile::exists(m_path)) { // it may have been cleared away
        m_path.clear();
        const auto prefix = purpose == Purpose::Thumbnail ? thumbnailPrefix : previewPrefix;
        const auto path = temporaryPath(prefix + QUuid::createUuid().toString(QUuid::WithoutBraces) + u'.'
                                        + fileExtension(m_mimeType));
        if (path && write(*path))
            m_path = *path;
    }
    co_return m_path.isEmpty() ? std::nullopt : std::optional(m_path);
}

// All of it, or nothing stays.
bool AttachmentFile::write(const QString &path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                   QFile::ReadOwner | QFile::WriteOwner))
        return false;
    const bool isWritten = file.write(m_data) == m_data.size();
    file.close();
    if (!isWritten || file.error() != QFile::NoError) {
        file.remove();
        return false;
    }
    return true;
}

Task<std::optional<QImage>> videoThumbnailImage(std::shared_ptr<AttachmentFile> file)
{
    constexpr std::chrono::milliseconds position(100);
    constexpr int longestSide = 400;
    const StopToken isAlwaysWanted;
    const auto path = co_await file->path(AttachmentFile::Purpose::Thumbnail);
    if (!path)
        co_return std::nullopt;
    co_return co_await videoFrame(*path, position, longestSide, isAlwaysWanted);
}

void sweepAttachmentFiles()
{
    makeBackgroundExecutor()->post(sweep);
}

} // namespace zenvor
