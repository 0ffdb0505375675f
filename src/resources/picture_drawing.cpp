#include "resources/picture_drawing.h"

#include <QImage>
#include <QPainter>

namespace zenvor {

namespace {

// A picture that is made much larger is out of focus anyway: to interpolate every pixel of a window would
// take longer than a frame.
void drawEnlarged(QPainter *painter, const QImage &image, const QRectF &part, const QRectF &target,
                  QSizeF pixels)
{
    constexpr int coarseness = 2;
    if (4 * part.width() > pixels.width()) {
        painter->drawImage(target, image, part);
        return;
    }
    QImage larger((pixels / coarseness).toSize(), QImage::Format_ARGB32_Premultiplied);
    larger.fill(Qt::transparent);
    QPainter smooth(&larger);
    smooth.setRenderHint(QPainter::SmoothPixmapTransform);
    smooth.drawImage(larger.rect(), image, part);
    smooth.end();
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter->drawImage(target, larger);
}

} // namespace

QRect aspectFit(QSize picture, QSize area)
{
    const auto size = QSizeF(picture).scaled(area, Qt::KeepAspectRatio).toSize();
    return {QPoint((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size};
}

void drawPicture(QPainter *painter, const QImage &image, const QRectF &part, const QRectF &target,
                 qreal density)
{
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    const QSizeF pixels = target.size() * density;
    if (part.width() <= 2 * pixels.width()) {
        drawEnlarged(painter, image, part, target, pixels);
        return;
    }
    // A painter that makes it much smaller would leave out lines.
    const auto smaller = image.copy(part.toAlignedRect())
                             .scaled(pixels.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter->drawImage(target, smaller);
}

} // namespace zenvor
