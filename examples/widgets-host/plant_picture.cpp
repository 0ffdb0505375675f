#include "plant_picture.h"

#include "look.h"

#include <QPainter>
#include <QPainterPath>

namespace {

// All in a square from -1 to 1, the ground at the bottom of the pot.

void paintLeaf(QPainter &painter, QPointF foot, double angle, double length, double width)
{
    QPainterPath leaf;
    leaf.cubicTo(-width, -length * 0.4, -width * 0.6, -length * 0.9, 0, -length);
    leaf.cubicTo(width * 0.6, -length * 0.9, width, -length * 0.4, 0, 0);
    painter.save();
    painter.translate(foot);
    painter.rotate(angle);
    painter.drawPath(leaf);
    painter.restore();
}

void paintFan(QPainter &painter, const QColor &color)
{
    constexpr QPointF foot(0, 0.2);
    for (int i = 0; i < 7; ++i) {
        const int side = i - 3;
        painter.setBrush(color.lighter(100 + 8 * (i % 3)));
        paintLeaf(painter, foot, side * 24.0, 0.95 - 0.06 * side * side, 0.2);
    }
}

void paintColumn(QPainter &painter, const QColor &color)
{
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(-0.2, -0.75, 0.4, 1.0), 0.2, 0.2);
    painter.setBrush(color.darker(112));
    painter.drawRoundedRect(QRectF(0.24, -0.4, 0.2, 0.42), 0.1, 0.1);
    painter.drawRoundedRect(QRectF(0.1, -0.12, 0.3, 0.16), 0.08, 0.08);
    painter.setBrush(color.lighter(125));
    for (const double x : {-0.1, 0.0, 0.1})
        painter.drawRoundedRect(QRectF(x - 0.012, -0.6, 0.024, 0.75), 0.012, 0.012);
}

void paintTrailing(QPainter &painter, const QColor &color)
{
    painter.setBrush(color);
    for (int i = 0; i < 5; ++i)
        paintLeaf(painter, {0, 0.2}, (i - 2) * 30.0, 0.5, 0.18);
    for (int i = 0; i < 4; ++i) {
        painter.setBrush(color.lighter(100 + 8 * i));
        paintLeaf(painter, {-0.42 - 0.05 * (i % 2), 0.12 + 0.16 * i}, i % 2 ? 200 : 150, 0.28, 0.11);
        paintLeaf(painter, {0.44 + 0.05 * (i % 2), 0.2 + 0.12 * i}, i % 2 ? 150 : 210, 0.26, 0.11);
    }
}

void paintPot(QPainter &painter, const QColor &color)
{
    painter.setBrush(color);
    painter.drawPolygon(QPolygonF({{-0.36, 0.25}, {0.36, 0.25}, {0.27, 0.85}, {-0.27, 0.85}}));
    painter.setBrush(color.darker(115));
    painter.drawRoundedRect(QRectF(-0.42, 0.16, 0.84, 0.18), 0.05, 0.05);
}

} // namespace

void paintPlant(QPainter &painter, const QRectF &area, const Plant &plant)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QPainterPath ground;
    ground.addRoundedRect(area, look::radius, look::radius);
    painter.setClipPath(ground);
    QColor light = plant.leaves;
    light.setAlpha(56);
    painter.fillRect(area, light);
    painter.translate(area.center());
    const double half = std::min(area.width(), area.height()) / 2;
    painter.scale(half, half);
    switch (plant.shape) {
    case Plant::Shape::Fan:
        paintFan(painter, plant.leaves);
        paintPot(painter, plant.pot);
        break;
    case Plant::Shape::Column:
        paintColumn(painter, plant.leaves);
        paintPot(painter, plant.pot);
        break;
    case Plant::Shape::Trailing:
        paintPot(painter, plant.pot);
        paintTrailing(painter, plant.leaves); // over the rim
        break;
    }
    painter.restore();
}

PlantPicture::PlantPicture(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(look::coverHeight);
}

void PlantPicture::setPlant(const Plant &plant)
{
    m_plant = plant;
    update();
}

void PlantPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintPlant(painter, rect(), m_plant);
}
