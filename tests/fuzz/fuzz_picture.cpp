#include "allocated_peak.h"
#include "fuzz_input.h"
#include "platform/image.h"

#include <QLoggingCategory>

using namespace zenvor;
using namespace zenvor::fuzz;

namespace {

constexpr int longestSide = 400;
// Half a gigabyte of pixels, and some for what a decoder needs beside them.
constexpr long long memoryLimit = (512LL + 64) << 20;

void requirePicture(const QImage &picture)
{
    require(!picture.isNull() && picture.width() > 0 && picture.height() > 0, "a picture has a size");
    require(std::max(picture.width(), picture.height()) <= longestSide, "a picture is as small as asked for");

    const auto jpeg = encodeJpeg(picture, 0.72);
    require(jpeg.has_value(), "a picture that was read can be sent");
    const auto again = decodeImage(*jpeg, longestSide);
    require(again && again->size() == picture.size(), "what is sent is a picture of the same size");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    makeApplication();
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false")); // a line for each broken file
    const auto bytes = bytesOf(data, size);
    const AllocatedPeak peak;
    const auto picture = decodeImage(bytes, longestSide);
    require(peak.bytes() <= memoryLimit, "decoding takes no more than half a gigabyte");
    if (picture)
        requirePicture(*picture);
    return 0;
}
