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
};

} // namespace zenvor
