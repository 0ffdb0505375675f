#include "platform/image.h"

#include "platform/image_cost.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

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

namespace {

// The mean of the neighbours in one direction, over a line of pixels that lie \a step apart.
void blurLine(QRgb *pixels, int count, qsizetype step, std::vector<QRgb> &line)
{
    constexpr int radius = 3;

    line.resize(size_t(count));
    for (int i = 0; i < count; ++i)
        line[size_t(i)] = pixels[i * step];
    const auto at = [&line, count](int i) {
        return line[size_t(std::clamp(i, 0, count - 1))];
    };
    std::array<int, 4> sums{};
    const auto add = [&sums](QRgb pixel, int sign) {
        for (size_t channel = 0; channel < sums.size(); ++channel)
            sums[channel] += sign * int(pixel >> (8 * channel) & 0xff);
    };
    for (int i = -radius; i <= radius; ++i)
        add(at(i), 1);
    for (int i = 0; i < count; ++i) {
        QRgb mean = 0;
        for (size_t channel = 0; channel < sums.size(); ++channel)
            mean |= QRgb(sums[channel] / (2 * radius + 1)) << (8 * channel);
        pixels[i * step] = mean;
        add(at(i + radius + 1), 1);
        add(at(i - radius), -1);
    }
}

} // namespace

QImage blurred(const QImage &image)
{
    const int reduction =
        std::max(qRound(8 * image.devicePixelRatio()), 1); // alike on screens of all densities
    constexpr int passes = 3; // of a box, to look like a lens

    if (image.isNull())
        return image;
    const QSize size(std::max(image.width() / reduction, 1), std::max(image.height() / reduction, 1));
    auto result = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    result.setDevicePixelRatio(1);
    auto *const pixels = reinterpret_cast<QRgb *>(result.bits());
    const qsizetype pitch = result.bytesPerLine() / qsizetype(sizeof(QRgb));
    std::vector<QRgb> line;
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < size.height(); ++y)
            blurLine(pixels + y * pitch, size.width(), 1, line);
        for (int x = 0; x < size.width(); ++x)
            blurLine(pixels + x, size.height(), pitch, line);
    }
    return result;
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
