#include "client/report_upload_attachment.h"

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

constexpr auto screenshotKind = "screenshot"_L1;
constexpr auto videoKind = "video"_L1;
constexpr auto jpeg = "image/jpeg"_L1;
constexpr auto mp4 = "video/mp4"_L1;

constexpr QLatin1StringView allowedScreenshotMimeTypes[] = {jpeg, "image/png"_L1, "image/webp"_L1};
constexpr QLatin1StringView allowedVideoMimeTypes[] = {mp4, "video/quicktime"_L1, "video/webm"_L1};

struct ExtensionType
{
    QLatin1StringView extension;
    QLatin1StringView mimeType;
};

constexpr ExtensionType extensionTypes[] = {
    {"jpg"_L1, jpeg},
    {"jpeg"_L1, jpeg},
    {"png"_L1, "image/png"_L1},
    {"webp"_L1, "image/webp"_L1},
    {"mp4"_L1, mp4},
    {"mov"_L1, "video/quicktime"_L1},
    {"webm"_L1, "video/webm"_L1},
};

template<typename Types>
bool contains(const Types &types, QStringView mimeType)
{
    return std::find(std::begin(types), std::end(types), mimeType) != std::end(types);
}

} // namespace

bool isAllowedScreenshotMimeType(QStringView mimeType)
{
    return contains(allowedScreenshotMimeTypes, mimeType);
}

bool isAllowedVideoMimeType(QStringView mimeType)
{
    return contains(allowedVideoMimeTypes, mimeType);
}

std::optional<QString> attachmentMimeType(QStringView extension)
{
    for (const auto &[known, mimeType] : extensionTypes) {
        if (extension.compare(known, Qt::CaseInsensitive) == 0)
            return QString(mimeType);
    }
    return std::nullopt;
}

QString attachmentKind(QStringView mimeType)
{
    return isAllowedVideoMimeType(mimeType) ? videoKind : screenshotKind;
}

AttachmentLabels normalizeAttachment(const ReportUploadAttachment &attachment)
{
    const auto mimeType = attachment.mimeType.trimmed().toLower();
    const auto kind = attachment.kind.trimmed().toLower();
    if (isAllowedVideoMimeType(mimeType))
        return {videoKind, mimeType};
    if (kind == videoKind)
        return {videoKind, mp4};
    if (isAllowedScreenshotMimeType(mimeType))
        return {screenshotKind, mimeType};
    return {screenshotKind, jpeg};
}

} // namespace zenvor
