#pragma once

#include <QFile>

namespace zenvor::test {

/// The path of one of the videos in tests/media.
inline QString clip(const QString &name)
{
    return QStringLiteral(ZENVOR_TEST_MEDIA "/") + name;
}

inline QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace zenvor::test
