#include "platform/image_cost.h"

#include <QImageReader>
#include <QtMath>

#include <algorithm>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// A few bytes can claim any size, and neither Qt nor the libraries below it have a bound that holds for every
// format (QImageReader's allocation limit is the application's to set, and does not see what libjpeg and
// libpng allocate). So the cost is worked out from the headers, before a decoder sees the picture.

// What may be held while one picture is decoded: 134 million pixels of an opaque PNG, 67 with transparency.
constexpr qint64 workingBytesLimit = 512LL << 20;
// A JPEG that is decoded row by row holds next to nothing, but takes 1.5 ms for a million pixels. Phones make
// 200 million.
constexpr qint64 jpegPixelsLimit = 250'000'000;
// Each scan of a JPEG in many scans walks the whole picture, even if it has but ten bytes; encoders make 14.
constexpr int jpegScansLimit = 64;
// libpng expands the compressed texts of a PNG while it reads the header, each to at most 8 MB, and Qt then
// holds them five times: 7 MB of file could ask for 30 GB. It also makes room for a chunk by the length that
// the chunk claims, up to 2 GB, before it looks for the bytes.
constexpr qint64 pngChunksLimit = 64LL << 20;
constexpr qint64 pngOneTextLimit = 8'000'000;
constexpr qint64 deflateRatio = 1032;
// CMYK and transparency. libtiff holds every sample of a strip, and a header can ask for 65535.
constexpr quint32 tiffSamplesLimit = 5;

/// The number of \a length bytes at \a offset. What lies beyond the end counts as zeros.
quint32 bigEndian(QByteArrayView data, qint64 offset, int length)
{
    quint32 result = 0;
    for (qint64 i = offset; i < offset + length; ++i)
        result = result << 8 | (i < data.size() ? quint8(data[qsizetype(i)]) : 0U);
    return result;
}

quint32 littleEndian(QByteArrayView data, qint64 offset, int length)
{
    quint32 result = 0;
    for (qint64 i = offset + length - 1; i >= offset; --i)
        result = result << 8 | (i < data.size() ? quint8(data[qsizetype(i)]) : 0U);
    return result;
}

/// What the markers of a JPEG say of its cost.
struct JpegCost
{
    /// What is held until the last scan is read. A picture in one scan is decoded row by row.
    qint64 coefficientBytes = 0;
    /// Where there are several: one for each component in each scan.
    int scans = 0;
};

/// The offset of the next marker's code, or the end. Like libjpeg, passes over what is no marker.
qsizetype nextMarker(QByteArrayView data, qsizetype offset)
{
    for (; offset + 1 < data.size(); ++offset) {
        const auto code = quint8(data[offset + 1]);
        if (quint8(data[offset]) == 0xff && code != 0x00 && code != 0xff)
            return offset + 1;
    }
    return data.size();
}

qint64 coefficientBytes(QByteArrayView frame)
{
    const qint64 pixels = qint64(bigEndian(frame, 3, 2)) * bigEndian(frame, 5, 2);
    quint32 samples = 0; // of as many pixels as make one sample of the coarsest component
    quint32 widest = 1;
    quint32 highest = 1;
    for (quint32 i = 0; i < bigEndian(frame, 7, 1); ++i) {
        const quint32 sampling = bigEndian(frame, 9 + 3 * i, 1);
        samples += (sampling >> 4) * (sampling & 15);
        widest = std::max(widest, sampling >> 4);
        highest = std::max(highest, sampling & 15);
    }
    return pixels * samples / (widest * highest) * qint64(sizeof(qint16));
}

JpegCost jpegCost(QByteArrayView data)
{
    JpegCost result;
    QByteArrayView frame;
    bool isProgressive = false;
    for (qsizetype at = nextMarker(data, 2); at < data.size(); at = nextMarker(data, at)) {
        const auto code = quint8(data[at++]);
        if (code == 0xd9) // the end: what phones append is no part of the picture
            break;
        if (code == 0x01 || (code >= 0xd0 && code <= 0xd8))
            continue; // these stand alone
        if (frame.isEmpty() && (code & 0xf0) == 0xc0 && code != 0xc4 && code != 0xc8 && code != 0xcc) {
            frame = data.sliced(at);
            isProgressive = (code & 3) == 2;
        } else if (code == 0xda) {
            const quint32 components = bigEndian(data, at + 2, 1);
            if (result.scans == 0 && !isProgressive && components == bigEndian(frame, 7, 1))
                return {};
            result.coefficientBytes = coefficientBytes(frame);
            result.scans += int(components);
        }
        at += bigEndian(data, at, 2);
    }
    return result;
}

/// What libpng may hold beside the pixels of a PNG, as far as one can tell without expanding its texts.
qint64 pngChunkBytes(QByteArrayView data)
{
    constexpr qsizetype headOfChunk = 8; // length and type
    constexpr qsizetype checksum = 4;
    qint64 texts = 0;
    qint64 longest = 0;
    for (qint64 at = 8; at + headOfChunk <= data.size();) {
        const qint64 length = bigEndian(data, at, 4);
        const QByteArrayView type = data.sliced(qsizetype(at) + 4, 4);
        if (type == "zTXt"_ba || type == "iTXt"_ba)
            texts += std::min(length * deflateRatio, pngOneTextLimit);
        if (type != "IDAT"_ba) // the pixels are read piece by piece
            longest = std::max(longest, length);
        at += headOfChunk + length + checksum;
    }
    return texts + longest;
}

/// Samples of a pixel of the first picture; of several statements the highest.
quint32 tiffSamples(QByteArrayView data)
{
    const auto number = data.startsWith('I') ? littleEndian : bigEndian;
    const qint64 directory = number(data, 4, 4);
    quint32 result = 1;
    for (quint32 i = 0; i < number(data, directory, 2); ++i) {
        const qint64 entry = directory + 2 + 12 * qint64(i);
        constexpr quint32 samplesPerPixel = 277;
        constexpr quint32 shortInteger = 3;
        if (number(data, entry, 2) == samplesPerPixel)
            result =
                std::max(result, number(data, entry + 8, number(data, entry + 2, 2) == shortInteger ? 2 : 4));
    }
    return result;
}

/// Of a pixel that is decoded in full: what Qt holds of it before and, where making a picture smaller needs
/// another pixel format, while it makes it smaller.
qint64 bytesPerPixel(QImage::Format format)
{
    if (format == QImage::Format_Invalid) // the decoder does not say
        return 8;
    const QPixelFormat pixel = QImage::toPixelFormat(format);
    const qint64 bytes = format == QImage::Format_Grayscale16 ? 8 : std::max(4, pixel.bitsPerPixel() / 8);
    const bool isScaledAsItIs =
        pixel.bitsPerPixel() >= 32 && pixel.alphaUsage() == QPixelFormat::IgnoresAlpha;
    return isScaledAsItIs ? bytes : 2 * bytes;
}

} // namespace

QByteArray imageFormat(QByteArrayView data)
{
    if (data.startsWith("\xff\xd8\xff"_ba))
        return "jpeg"_ba;
    if (data.startsWith("\x89PNG\r\n\x1a\n"_ba))
        return "png"_ba;
    if (data.startsWith("GIF87a"_ba) || data.startsWith("GIF89a"_ba))
        return "gif"_ba;
    if (data.size() >= 12 && data.startsWith("RIFF"_ba) && data.sliced(8).startsWith("WEBP"_ba))
        return "webp"_ba;
    if (data.startsWith("II*\0"_ba) || data.startsWith("MM\0*"_ba))
        return "tiff"_ba;
    if (data.startsWith("BM"_ba))
        return "bmp"_ba;
    if (data.size() >= 16 && data.sliced(4).startsWith("ftyp"_ba)) {
        const qint64 end = std::min<qint64>(data.size(), bigEndian(data, 0, 4));
        const QByteArrayView brands = data.first(qsizetype(std::max<qint64>(end, 8))).sliced(8);
        const auto has = [brands](QByteArrayView brand) {
            return brands.indexOf(brand) >= 0;
        };
        if (has("avif") || has("avis"))
            return "avif"_ba;
        if (has("heic") || has("heix") || has("heim") || has("heis") || has("mif1"))
            return "heic"_ba;
    }
    return {};
}

bool isHeaderAffordable(QByteArrayView data, QByteArrayView format)
{
    return format != "png" || pngChunkBytes(data) <= pngChunksLimit;
}

// QImageReader names the part of a GIF that its first frame covers, but makes the whole canvas.
QSize claimedSize(QByteArrayView data, const QImageReader &reader)
{
    const QSize canvas(int(littleEndian(data, 6, 2)), int(littleEndian(data, 8, 2)));
    return reader.format() == "gif" && !canvas.isEmpty() ? canvas : reader.size();
}

QSize sizeAsDecoded(QByteArrayView data, const QImageReader &reader, QSize size, QSize target)
{
    if (reader.format() == "jpeg") {
        // libjpeg makes eighths; Qt asks it for the fewest that are not below the target.
        const double ratio =
            std::min(double(size.width()) / target.width(), double(size.height()) / target.height());
        const int eighths = std::clamp(qCeil(8 / ratio), 1, 8);
        return {int((qint64(size.width()) * eighths + 7) / 8),
                int((qint64(size.height()) * eighths + 7) / 8)};
    }
    const bool isInterlaced = bigEndian(data, 28, 1) != 0;
    const bool isTrueColor =
        reader.imageFormat() == QImage::Format_RGB32 || reader.imageFormat() == QImage::Format_ARGB32;
    return reader.format() == "png" && isTrueColor && !isInterlaced ? target : size;
}

bool isAffordable(QByteArrayView data, const QImageReader &reader, QSize size, QSize asDecoded)
{
    const qint64 pixels = qint64(size.width()) * size.height();
    const qint64 perPixel = bytesPerPixel(reader.imageFormat());
    if (reader.format() == "jpeg") {
        const JpegCost cost = jpegCost(data);
        const qint64 decodedBytes = qint64(asDecoded.width()) * asDecoded.height() * perPixel;
        return pixels <= jpegPixelsLimit && cost.scans <= jpegScansLimit
            && cost.coefficientBytes + decodedBytes <= workingBytesLimit;
    }
    if (reader.format() == "tiff") {
        const quint32 samples = tiffSamples(data);
        return samples <= tiffSamplesLimit && pixels * (perPixel + 2 * samples) <= workingBytesLimit;
    }
    return pixels * perPixel <= workingBytesLimit;
}

} // namespace zenvor
