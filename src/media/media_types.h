#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

class QIODevice;

namespace zenvor {

/// What the form can do with a file.
enum class MediaKind { Image, Video, Other };

/// What \a file, which is named \a name and open, holds: by its name, and where that says nothing by its
/// first bytes. Any thread.
MediaKind mediaKind(const QString &name, QIODevice &file);
/// The same by the name alone.
MediaKind mediaKind(const QString &name);

/// The MIME type under which a picture is sent, by its first bytes; what it is declared as does not count.
/// All that is neither PNG nor WebP counts as JPEG, and keeps its bytes.
QString detectedImageMimeType(QByteArrayView data);

/// The MIME type under which a video is sent whose file has this extension, in any letter case.
QString detectedVideoMimeType(const std::optional<QString> &extension);

/// The extension of a file that holds a video of this type.
QString fileExtension(const QString &mimeType);

} // namespace zenvor
