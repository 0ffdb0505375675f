#include "media/media_folder.h"

#include "media/media_types.h"

#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>

namespace zenvor {

namespace {

bool isBefore(const MediaEntry &left, const MediaEntry &right)
{
    if (left.isFolder != right.isFolder)
        return left.isFolder;
    if (!left.isFolder && left.modified != right.modified)
        return left.modified > right.modified;
    return QString::localeAwareCompare(left.path, right.path) < 0;
}

} // namespace

MediaFolder MediaFolder::read(const QString &path)
{
    const QFileInfo folder(path);
    MediaFolder result{folder.isDir() && folder.isReadable() && folder.isExecutable(), {}};
    if (!result.isReadable)
        return result;
    QDirIterator files(path, QDir::Dirs | QDir::Files | QDir::Readable | QDir::NoDotAndDotDot);
    while (files.hasNext()) {
        const auto file = files.nextFileInfo();
        if (!file.isDir() && !file.isFile()) // a link to a pipe
            continue;
        const auto kind = file.isDir() ? MediaKind::Other : mediaKind(file.fileName());
        if (file.isDir() || kind != MediaKind::Other)
            result.entries.append(
                {file.filePath(), file.isDir(), kind == MediaKind::Video, file.lastModified()});
    }
    std::sort(result.entries.begin(), result.entries.end(), isBefore);
    return result;
}

} // namespace zenvor
