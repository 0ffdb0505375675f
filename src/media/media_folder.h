#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace zenvor {

/// A folder, picture or video that can be chosen.
struct MediaEntry
{
    QString path;
    bool isFolder = false;
    bool isVideo = false;
    QDateTime modified;
};

/// What a folder has to choose from.
struct MediaFolder
{
    /// False if there is no such folder, or if it is kept from the user.
    bool isReadable = false;
    /// First the folders by their names, then pictures and videos, the newest first. Nothing hidden.
    QList<MediaEntry> entries;

    /// Looks into the folder \a path; how long that takes is the disk's matter. Any thread but the main one.
    static MediaFolder read(const QString &path);
};

} // namespace zenvor
