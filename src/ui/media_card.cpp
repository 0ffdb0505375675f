#include "ui/media_card.h"

#include "media/attachment_file.h"
#include "ui/picture_decoding.h"

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestSide = 400;

} // namespace

MediaCard::MediaCard(const ReportUploadAttachment &attachment, QObject *parent)
    : QObject(parent)
    , m_isVideo(attachment.kind == "video"_L1)
    , m_file(m_isVideo ? std::make_shared<AttachmentFile>(attachment.data, attachment.mimeType) : nullptr)
{
    if (m_isVideo)
        decodeVideo(this, m_file); // detached: without a picture the symbol stays
    else
        decode(this, attachment.data); // detached: a picture that cannot be decoded shows nothing
}

MediaCard::~MediaCard() = default;

Task<> MediaCard::decode(QPointer<MediaCard> card, QByteArray data)
{
    const auto image = co_await decodedPicture(std::move(data), longestSide);
    if (card && image)
        card->show(*image);
}

Task<> MediaCard::decodeVideo(QPointer<MediaCard> card, std::shared_ptr<AttachmentFile> file)
{
    const auto image = co_await videoThumbnailImage(std::move(file));
    if (card && image)
        card->show(*image);
}

void MediaCard::show(const QImage &image)
{
    m_image = image;
    Q_EMIT imageChanged();
}

} // namespace zenvor
