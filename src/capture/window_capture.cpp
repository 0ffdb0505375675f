#include "capture/window_capture.h"

#include "platform/window.h"

#include <QPainter>
#include <QQuickWindow>

namespace zenvor {

namespace {

// Scenes in windows that are embedded in \a parent: the widgets around them know nothing of what these show.
void paintEmbedded(QPainter &painter, const QWindow *parent, QPoint origin)
{
    const auto children = parent->findChildren<QWindow *>(Qt::FindDirectChildrenOnly);
    for (auto *child : children) {
        if (!child->isVisible())
            continue;
        const QPoint corner = origin + child->position();
        if (qobject_cast<QQuickWindow *>(child))
            painter.drawImage(corner, captureWindow(child));
        paintEmbedded(painter, child, corner);
    }
}

QImage pictureOfWidgets(QWindow *window)
{
    QImage image = widgetWindows().picture ? widgetWindows().picture(window) : QImage();
    if (!image.isNull()) {
        QPainter painter(&image);
        paintEmbedded(painter, window, {});
    }
    return image;
}

} // namespace

QImage captureWindow(QWindow *window)
{
    const qreal density = window->devicePixelRatio();
    auto *quickWindow = qobject_cast<QQuickWindow *>(window);
    QImage image = quickWindow ? quickWindow->grabWindow() : pictureOfWidgets(window);
    if (image.isNull()) {
        image = QImage(window->size() * density, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
    }
    image.setDevicePixelRatio(density); // the software renderer leaves it at 1
    return image;
}

} // namespace zenvor
