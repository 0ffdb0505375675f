#include "resources/symbol_item.h"

#include "resources/symbol_paths.h"

#include <QPainter>

namespace zenvor {

void SymbolItem::setName(const QString &name)
{
    m_name = name;
    update();
    Q_EMIT nameChanged();
}

void SymbolItem::setColor(const QColor &color)
{
    m_color = color;
    update();
    Q_EMIT colorChanged();
}

void SymbolItem::paint(QPainter *painter)
{
    const qreal side = std::min(width(), height());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate((width() - side) / 2, (height() - side) / 2);
    painter->scale(side / symbolSize, side / symbolSize);
    painter->fillPath(symbolPath(m_name), m_color);
}

} // namespace zenvor
