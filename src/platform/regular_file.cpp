#include "platform/regular_file.h"

#include <QFile>
#include <QFileInfo>

#include <new>

namespace zenvor {

std::optional<QByteArray> contentsOfFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    try {
        auto contents = file.readAll();
        if (file.error() != QFile::NoError)
            return std::nullopt;
        return contents;
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

QString extensionOfFile(const QString &path)
{
    const QFileInfo file(path);
    return file.completeBaseName().isEmpty() ? QString() : file.suffix();
}

} // namespace zenvor
