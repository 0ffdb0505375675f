#pragma once

#include <QImage>
#include <QQuickPaintedItem>

namespace zenvor {

/// A picture that fills the item, smoothly scaled, with rounded corners where there is a radius. Drawn alike
/// by every renderer.
class PictureItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVariant image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    /// A QImage, which QML has no name for; anything else draws nothing.
    QVariant image() const { return m_image; }
    void setImage(const QVariant &image);
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void imageChanged();
    void radiusChanged();

private:
    void drawEnlarged(QPainter *painter, const QRectF &part, const QSizeF &target);

    QImage m_image;
    qreal m_radius = 0;
};

} // namespace zenvor
