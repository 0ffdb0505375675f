#include "ui/media_card.h"

#include "platform/awaitable_callback.h"
#include "platform/image.h"

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSide = 400;

Task<std::optional<QImage>> decoded(QByteArray data)
{
    co_return decodeImage(data, longestSide);
}

} // namespace

MediaCard::MediaCard(const ReportUploadAttachment &attachment, QObject *parent)
    : QObject(parent)
    , m_isVideo(attachment.kind == "video"_L1)
{
    if (!m_isVideo)
        decode(this, attachment.data); // detached: a picture that cannot be decoded shows nothing
}

Task<> MediaCard::decode(QPointer<MediaCard> card, QByteArray data)
{
    const auto decoding = [data] {
        return decoded(data);
    };
    std::optional<QImage> image;
    try {
        image = co_await runOn(makeBackgroundExecutor(), decoding);
    } catch (const std::exception &) {
        image.reset();
    }
    if (!card || !image)
        co_return;
    card->m_image = *image;
    Q_EMIT card->imageChanged();
}

} // namespace zenvor
