#include "resources/picture_item.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>

namespace zenvor {

// A picture that is made much larger is out of focus anyway: to interpolate every pixel of a window would
// take longer than a frame.
void PictureItem::drawEnlarged(QPainter *painter, const QRectF &part, const QSizeF &target)
{
    constexpr int coarseness = 2;
    if (4 * part.width() > target.width()) {
        painter->drawImage(boundingRect(), m_image, part);
        return;
    }
    QImage larger((target / coarseness).toSize(), QImage::Format_ARGB32_Premultiplied);
    larger.fill(Qt::transparent);
    QPainter smooth(&larger);
    smooth.setRenderHint(QPainter::SmoothPixmapTransform);
    smooth.drawImage(larger.rect(), m_image, part);
    smooth.end();
    painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter->drawImage(boundingRect(), larger);
}

void PictureItem::setImage(const QVariant &image)
{
    m_image = image.value<QImage>();
    update();
    Q_EMIT imageChanged();
}

void PictureItem::setRadius(qreal radius)
{
    m_radius = radius;
    update();
    Q_EMIT radiusChanged();
}

void PictureItem::paint(QPainter *painter)
{
    if (m_image.isNull())
        return;
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    if (m_radius > 0) {
        painter->setRenderHint(QPainter::Antialiasing);
        QPainterPath outline;
        outline.addRoundedRect(boundingRect(), m_radius, m_radius);
        painter->setClipPath(outline);
    }
    // The part in the middle that has the item's shape.
    QSizeF part = boundingRect().size();
    part.scale(m_image.size(), Qt::KeepAspectRatio);
    const QPointF corner((m_image.width() - part.width()) / 2, (m_image.height() - part.height()) / 2);
    const QSizeF target = boundingRect().size() * window()->effectiveDevicePixelRatio();
    if (part.width() <= 2 * target.width()) {
        drawEnlarged(painter, QRectF(corner, part), target);
        return;
    }
    // A painter that makes it much smaller would leave out lines.
    const auto smaller = m_image.copy(QRectF(corner, part).toAlignedRect())
                             .scaled(target.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter->drawImage(boundingRect(), smaller);
}

} // namespace zenvor
