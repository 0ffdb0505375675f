#include "facade/pending_attachments.h"

#include "client/report_upload_attachment.h"
#include "platform/image.h"
#include "platform/screen.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <new>
#include <utility>

namespace zenvor {

namespace {

constexpr QStringView jpeg = u"image/jpeg";

// No alias and no parameter: the service knows these six names.
std::optional<QString> normalizeAttachmentMimeType(const QString &mimeType)
{
    auto normalized = mimeType.trimmed().toLower();
    if (isAllowedScreenshotMimeType(normalized) || isAllowedVideoMimeType(normalized))
        return normalized;
    return std::nullopt;
}

// Only regular files: a pipe or a device may never end.
QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    try {
        auto contents = file.readAll();
        return file.error() == QFile::NoError ? contents : QByteArray();
    } catch (const std::bad_alloc &) {
        return {}; // larger than the memory
    }
}

} // namespace

bool PendingAttachments::add(const QImage &image, double compressionQuality)
{
    auto data = encodeJpeg(image, compressionQuality);
    if (!data)
        return false;
    m_attachments.append({*std::move(data), jpeg.toString(), attachmentKind(jpeg), image});
    return true;
}

bool PendingAttachments::add(const QByteArray &data, const QString &mimeType)
{
    const auto type = normalizeAttachmentMimeType(mimeType);
    if (data.isEmpty() || !type)
        return false;
    QImage preview;
    if (!isAllowedVideoMimeType(*type)) {
        auto decoded = decodeImage(data, Screen::longestSideInPixels());
        if (!decoded)
            return false;
        preview = *std::move(decoded);
    }
    m_attachments.append({data, *type, attachmentKind(*type), preview});
    return true;
}

bool PendingAttachments::addFile(const QUrl &url, const std::optional<QString> &mimeType)
{
    if (!url.isLocalFile())
        return false;
    const auto path = url.toLocalFile();
    const auto type = mimeType ? mimeType : attachmentMimeType(QFileInfo(path).suffix());
    return add(contentsOf(path), type.value_or(jpeg.toString()));
}

void PendingAttachments::clear()
{
    m_attachments.clear();
}

QList<PendingAttachment> PendingAttachments::take()
{
    return std::exchange(m_attachments, {});
}

} // namespace zenvor
