#include "resources/picture_item.h"

#include "resources/picture_drawing.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickWindow>

namespace zenvor {

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

void PictureItem::setWhole(bool isWhole)
{
    m_isWhole = isWhole;
    update();
    Q_EMIT wholeChanged();
}

void PictureItem::paint(QPainter *painter)
{
    if (m_image.isNull())
        return;
    if (m_radius > 0) {
        painter->setRenderHint(QPainter::Antialiasing);
        QPainterPath outline;
        outline.addRoundedRect(boundingRect(), m_radius, m_radius);
        painter->setClipPath(outline);
    }
    const auto density = window()->effectiveDevicePixelRatio();
    if (m_isWhole) {
        painter->scale(1 / density, 1 / density);
        const auto pixels = QSize(qRound(width()), qRound(height())) * density; // of the item's surface
        drawPicture(painter, m_image, m_image.rect(), aspectFit(m_image.size(), pixels), 1);
        return;
    }
    // The part in the middle that has the item's shape.
    QSizeF part = boundingRect().size();
    part.scale(m_image.size(), Qt::KeepAspectRatio);
    const QPointF corner((m_image.width() - part.width()) / 2, (m_image.height() - part.height()) / 2);
    drawPicture(painter, m_image, QRectF(corner, part), boundingRect(), density);
}

} // namespace zenvor
