#pragma once

#include <QImage>

class QWindow;

namespace zenvor {

/// What \a window shows now, in its size and at the pixel density of its screen; what is transparent there is
/// so here. A blank image if the window draws in a way that cannot be read back. Nothing of other windows.
/// Takes some milliseconds. Main thread.
QImage captureWindow(QWindow *window);

} // namespace zenvor
