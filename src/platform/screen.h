#pragma once

#include <QRectF>

namespace zenvor {

class Screen
{
public:
    Screen() = delete;

    /// The main screen in points, that is device-independent pixels, as it is turned now. Empty without
    /// a screen or without a graphical application. Main thread.
    static QRectF mainBounds();

    /// The longest side of all screens in physical pixels: no picture is shown larger. At least 1024.
    /// Main thread.
    static int longestSideInPixels();
};

} // namespace zenvor
