#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace zenvor {

/// One of the library's drawings, by the name of the symbol that it stands for. An unknown name draws
/// nothing.
class SymbolItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    QString name() const { return m_name; }
    void setName(const QString &name);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QColor m_color;
};

} // namespace zenvor
