#include "platform/image.h"

#include "platform/image_cost.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr int jpegSideLimit = 65500; // libjpeg's
constexpr double defaultQuality = 0.72;

QSize fitted(QSize size, int longestSide)
{
    if (std::max(size.width(), size.height()) <= longestSide)
        return size;
    return size.scaled(longestSide, longestSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

bool isIndexed(QImage::Format format)
{
    return format == QImage::Format_Mono || format == QImage::Format_MonoLSB
        || format == QImage::Format_Indexed8;
}

/// Qt's encoder turns transparency black.
QImage overWhite(const QImage &image)
{
    QImage result(image.size(), QImage::Format_RGB32);
    if (result.isNull())
        return result;
    result.fill(Qt::white);
    result.setColorSpace(image.colorSpace());
    QPainter painter(&result);
    painter.drawImage(result.rect(), image);
    return result;
}

/// The encoder writes the texts as comments, and an image that shares its pixels can be rid of them only by
/// being copied: so another image looks at the same pixels, as long as they live.
QImage withoutTexts(const QImage &image)
{
    if (image.textKeys().isEmpty())
        return image;
    QImage result(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
    if (isIndexed(image.format()))
        result.setColorTable(image.colorTable());
    if (image.colorSpace().isValid())
        result.setColorSpace(image.colorSpace());
    return result;
}

} // namespace

QImage shrunk(QImage image, int longestSide)
{
    const QSize target = fitted(image.size(), longestSide);
    if (target == image.size())
        return image;
    // Scaling would give a picture with a colour table its few colours again, which leaves nothing of a
    // scanned text.
    if (isIndexed(image.format()))
        image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::optional<QImage> decodeImage(const QByteArray &data, int longestSide)
{
    const QByteArray format = imageFormat(data);
    if (format.isEmpty() || !isHeaderAffordable(data, format))
        return std::nullopt;

    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = claimedSize(data, reader);
    if (size.isEmpty())
        return std::nullopt;
    const QSize target = fitted(size, longestSide);
    const QSize asDecoded = sizeAsDecoded(data, reader, size, target);
    if (!isAffordable(data, reader, size, asDecoded))
        return std::nullopt;

    // The orientation is applied last, to the small picture: it swaps the sides, which have the same bound.
    reader.setAutoTransform(true);
    const bool hasColorTable = isIndexed(reader.imageFormat());
    if (target != size && !hasColorTable)
        reader.setScaledSize(target);
    // A decoder that finds the image it would make uses it, and does not ask for the application's allocation
    // limit, which refuses photos if it is small. Black, because a file that was cut short fills only a part.
    QImage image(asDecoded, reader.imageFormat());
    image.fill(0);
    if (!reader.read(&image) || image.isNull())
        return std::nullopt;
    return shrunk(std::move(image), longestSide);
}

std::optional<QByteArray> encodeJpeg(const QImage &image, double quality)
{
    if (image.isNull() || std::max(image.width(), image.height()) > jpegSideLimit)
        return std::nullopt;
    const QImage opaque = withoutTexts(image.hasAlphaChannel() ? overWhite(image) : image);
    if (opaque.isNull())
        return std::nullopt;
    QByteArray result;
    QBuffer buffer(&result);
    QImageWriter writer(&buffer, "jpeg"_ba);
    const double percent = 100 * (std::isnan(quality) ? defaultQuality : std::clamp(quality, 0.0, 1.0));
    writer.setQuality(qRound(percent));
    if (!writer.write(opaque))
        return std::nullopt;
    return result;
}

} // namespace zenvor
