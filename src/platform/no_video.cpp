// Built without Qt Multimedia: no video can be shown.
#include "platform/video.h"

namespace zenvor {

Task<std::optional<QImage>> videoFrame(QString, std::chrono::milliseconds, int, StopToken)
{
    co_return std::nullopt;
}

std::unique_ptr<VideoPlayback> VideoPlayback::open(const QString &)
{
    return nullptr;
}

} // namespace zenvor
