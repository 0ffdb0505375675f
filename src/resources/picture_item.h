#pragma once

#include <QImage>
#include <QQuickPaintedItem>

namespace zenvor {

/// A picture that fills the item, smoothly scaled, with rounded corners where there is a radius; or the whole
/// of it in the middle of the item. Drawn alike by every renderer.
class PictureItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QVariant image READ image WRITE setImage NOTIFY imageChanged)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool isWhole READ isWhole WRITE setWhole NOTIFY wholeChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    /// A QImage, which QML has no name for; anything else draws nothing.
    QVariant image() const { return m_image; }
    void setImage(const QVariant &image);
    qreal radius() const { return m_radius; }
    void setRadius(qreal radius);
    bool isWhole() const { return m_isWhole; }
    void setWhole(bool isWhole);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void imageChanged();
    void radiusChanged();
    void wholeChanged();

private:
    QImage m_image;
    qreal m_radius = 0;
    bool m_isWhole = false;
};

} // namespace zenvor
