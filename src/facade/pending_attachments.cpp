#include "facade/pending_attachments.h"

#include "client/report_upload_attachment.h"
#include "platform/image.h"
#include "platform/regular_file.h"
#include "platform/screen.h"

#include <QUrl>

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

} // namespace

bool PendingAttachments::add(const QImage &image, double compressionQuality)
{
    auto data = encodeJpeg(image, compressionQuality);
    if (!data)
        return false;
    m_attachments.append({*std::move(data), jpeg.toString(), attachmentKind(jpeg),
                          shrunk(image, Screen::longestSideInPixels())});
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
    // A host makes it a file of another machine, which some systems would log in to.
    if (!url.isLocalFile() || !url.host().isEmpty())
        return false;
    const auto path = url.toLocalFile();
    const auto type = mimeType ? mimeType : attachmentMimeType(extensionOfFile(path));
    return add(contentsOfFile(path).value_or(QByteArray()), type.value_or(jpeg.toString()));
}

bool PendingAttachments::set(const QImage &image, double compressionQuality)
{
    clear();
    return add(image, compressionQuality);
}

bool PendingAttachments::set(const QByteArray &data, const QString &mimeType)
{
    clear();
    return data.isEmpty() || add(data, mimeType);
}

bool PendingAttachments::setFile(const QUrl &url, const std::optional<QString> &mimeType)
{
    clear();
    return addFile(url, mimeType);
}

int PendingAttachments::setFiles(const QList<QUrl> &urls)
{
    clear();
    for (const auto &url : urls)
        addFile(url, std::nullopt);
    return int(m_attachments.size());
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
