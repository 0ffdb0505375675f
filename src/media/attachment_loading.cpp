#include "media/attachment_loading.h"

#include "media/media_types.h"
#include "platform/awaitable_callback.h"
#include "platform/regular_file.h"

#include <QFile>
#include <QFileInfo>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// Some systems hand out files that only they can open, by a URL of theirs.
QString pathOf(const QUrl &url)
{
    if (url.scheme() == "content"_L1)
        return url.toString(QUrl::FullyEncoded);
    // A host makes it a file of another machine, which some systems would log in to.
    return url.isLocalFile() && url.host().isEmpty() ? url.toLocalFile() : QString();
}

MediaKind kindOfFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return MediaKind::Other;
    return mediaKind(QFileInfo(path).fileName(), file);
}

std::optional<ReportUploadAttachment> load(const QUrl &url)
{
    const auto path = pathOf(url);
    const auto kind = kindOfFile(path);
    if (kind == MediaKind::Other)
        return std::nullopt;
    auto data = contentsOfFile(path);
    if (!data || data->isEmpty())
        return std::nullopt;
    if (kind == MediaKind::Image) {
        auto type = detectedImageMimeType(*data);
        return ReportUploadAttachment{std::move(*data), std::move(type), u"screenshot"_s};
    }
    const auto extension = extensionOfFile(path);
    auto type = detectedVideoMimeType(extension.isEmpty() ? std::nullopt : std::optional(extension));
    return ReportUploadAttachment{std::move(*data), std::move(type), u"video"_s};
}

Task<std::optional<ReportUploadAttachment>> loadHere(QUrl url)
{
    co_return load(url);
}

} // namespace

Task<std::optional<ReportUploadAttachment>> loadAttachment(QUrl result)
{
    const auto loading = [result] {
        return loadHere(result);
    };
    co_return co_await runOn(makeBackgroundExecutor(), loading);
}

Task<QList<ReportUploadAttachment>> loadAttachmentsFromPicker(QList<QUrl> results, int most)
{
    QList<ReportUploadAttachment> loaded;
    for (const auto &result : std::as_const(results)) {
        if (loaded.size() >= most)
            break;
        auto attachment = co_await loadAttachment(result);
        if (attachment)
            loaded.append(std::move(*attachment));
    }
    co_return loaded;
}

} // namespace zenvor
