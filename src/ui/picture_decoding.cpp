#include "ui/picture_decoding.h"

#include "platform/awaitable_callback.h"
#include "platform/image.h"
#include "platform/screen.h"

namespace zenvor {

namespace {

Task<std::optional<QImage>> decodedHere(QByteArray data, int longestSide)
{
    co_return decodeImage(data, longestSide);
}

} // namespace

Task<std::optional<QImage>> decodedPicture(QByteArray data, int longestSide)
{
    const auto decoding = [data, longestSide] {
        return decodedHere(data, longestSide);
    };
    std::optional<QImage> image;
    try {
        image = co_await runOn(makeBackgroundExecutor(), decoding);
    } catch (const std::exception &) {
        image.reset();
    }
    co_return image;
}

Task<std::optional<QImage>> decodedScreenshot(QByteArray data)
{
    const int longestSide = Screen::longestSideInPixels();
    co_return co_await decodedPicture(std::move(data), longestSide);
}

} // namespace zenvor
