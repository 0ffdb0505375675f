#include "fuzz_input.h"
#include "platform/video_rotation.h"

#include <QBuffer>

using namespace zenvor;
using namespace zenvor::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    auto bytes = bytesOf(data, size);
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const int rotation = videoRotation(file);
    require(rotation >= 0 && rotation < 360 && rotation % 90 == 0, "a video is turned by quarters");
    return 0;
}
