#include "media/media_types.h"

#include <QIODevice>
#include <QMimeDatabase>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

MediaKind kindOf(const QMimeType &type)
{
    if (type.name().startsWith("image/"_L1))
        return MediaKind::Image;
    return type.name().startsWith("video/"_L1) ? MediaKind::Video : MediaKind::Other;
}

} // namespace

MediaKind mediaKind(const QString &name, QIODevice &file)
{
    return kindOf(QMimeDatabase().mimeTypeForFileNameAndData(name, &file));
}

MediaKind mediaKind(const QString &name)
{
    return kindOf(QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension));
}

QString detectedImageMimeType(QByteArrayView data)
{
    constexpr qsizetype shortest = 12;
    if (data.size() < shortest)
        return u"image/jpeg"_s;
    if (data.startsWith("\x89PNG"))
        return u"image/png"_s;
    if (data.startsWith("RIFF") && data.sliced(8, 4) == "WEBP")
        return u"image/webp"_s;
    return u"image/jpeg"_s;
}

QString detectedVideoMimeType(const std::optional<QString> &extension)
{
    const auto known = extension.value_or(QString()).toLower();
    if (known == "mov"_L1)
        return u"video/quicktime"_s;
    return known == "webm"_L1 ? u"video/webm"_s : u"video/mp4"_s;
}

QString fileExtension(const QString &mimeType)
{
    const auto known = mimeType.trimmed().toLower();
    if (known == "video/quicktime"_L1)
        return u"mov"_s;
    return known == "video/webm"_L1 ? u"webm"_s : u"mp4"_s;
}

} // namespace zenvor
