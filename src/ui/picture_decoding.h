#pragma once

#include "platform/task.h"

#include <QByteArray>
#include <QImage>

#include <optional>

namespace zenvor {

/// The picture in \a data, decoded on another thread, no side longer than \a longestSide pixels; nothing if
/// it cannot be decoded.
Task<std::optional<QImage>> decodedPicture(QByteArray data, int longestSide);

/// The same, large enough for the screen. From the main thread.
Task<std::optional<QImage>> decodedScreenshot(QByteArray data);

} // namespace zenvor
