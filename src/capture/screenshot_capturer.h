#pragma once

#include <QImage>

#include <optional>

namespace zenvor {

class ScreenshotCapturer
{
public:
    ScreenshotCapturer() = delete;

    /// What the user is looking at: the key window, at its screen's pixel density. Nothing while there is
    /// none. Takes up to a frame's time. Main thread.
    static std::optional<QImage> captureCurrentWindow();
};

} // namespace zenvor
