#include "capture/screenshot_capturer.h"

#include "capture/window_capture.h"
#include "platform/window.h"

namespace zenvor {

std::optional<QImage> ScreenshotCapturer::captureCurrentWindow()
{
    auto *window = keyWindow();
    return window ? std::optional(captureWindow(window)) : std::nullopt;
}

} // namespace zenvor
