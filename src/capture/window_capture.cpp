#include "capture/window_capture.h"

#include <QQuickWindow>

namespace zenvor {

QImage captureWindow(QWindow *window)
{
    const qreal density = window->devicePixelRatio();
    QImage image;
    if (auto *quickWindow = qobject_cast<QQuickWindow *>(window))
        image = quickWindow->grabWindow();
    if (image.isNull()) {
        image = QImage(window->size() * density, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    image.setDevicePixelRatio(density); // the software renderer leaves it at 1
    return image;
}

} // namespace zenvor
