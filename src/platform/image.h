#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace zenvor {

/// Decodes a picture by its content, whatever it is named: JPEG, PNG, GIF and BMP, and WebP, TIFF, HEIF and
/// AVIF where Qt has a plugin for them. Of an animation the first frame. It stands upright where Qt reads the
/// orientation mark (not in PNG and WebP). It is made smaller, never larger, so that no side exceeds
/// \a longestSide pixels.
///
/// Nothing if the bytes are no such picture, or if decoding it would take more than half a gigabyte or more
/// than a few seconds, whatever size it claims. The rest of a JPEG or BMP that was cut short may be grey or
/// black. The application's QImageReader::allocationLimit() is left alone; it counts for WebP, GIF, HEIF and
/// AVIF only, whose decoders see a whole frame before it can be made smaller.
///
/// Any thread. Takes up to a second for a photo: not for the main thread. The bytes are not copied.
std::optional<QImage> decodeImage(const QByteArray &data, int longestSide);

/// \a image, made smaller if need be so that no side exceeds \a longestSide pixels. Any thread.
QImage shrunk(QImage image, int longestSide);

/// \a image out of focus, a pixel for eight by eight points, for a backdrop that is drawn stretched. Takes a
/// few milliseconds for a window. Any thread.
QImage blurred(const QImage &image);

/// A JPEG file of \a quality 0 to 1; what is outside counts as the nearer end, what is not a number as 0.72.
/// Transparent parts show white. The texts that an image carries are left out: they may be private.
/// Nothing for a null image or one that JPEG cannot hold (a side above 65500).
/// Any thread.
std::optional<QByteArray> encodeJpeg(const QImage &image, double quality);

} // namespace zenvor
