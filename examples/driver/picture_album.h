#pragma once

#include <QDir>
#include <QImage>

namespace driver {

/// A folder of PNG files, numbered in the order in which they come.
class PictureAlbum
{
public:
    explicit PictureAlbum(const QDir &folder) : m_folder(folder) {}

    void add(const QString &name, const QImage &picture);

private:
    const QDir m_folder;
    int m_count = 0;
};

} // namespace driver
