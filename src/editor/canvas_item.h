#pragma once

#include "editor/drawing.h"
#include "editor/tool_palette.h"

#include <QPointer>
#include <QQuickItem>
#include <QRegion>

#include <optional>

namespace zenvor {

/// Shows a drawing, and draws with what the palette says: by finger, stylus or mouse, the left button. One
/// pointer at a time draws; another one that comes down meanwhile, such as the heel of a hand, does nothing
/// until it is lifted. Two strokes at once would leave open which of them is undone first.
///
/// It is made of tiles, and a frame draws those anew that a stroke has touched: a single surface would be
/// mixed with the picture, or sent to the graphics card, as a whole for every movement.
class CanvasItem : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(zenvor::Drawing *drawing READ drawing WRITE setDrawing NOTIFY drawingChanged)
    Q_PROPERTY(zenvor::ToolPalette *tools READ tools WRITE setTools NOTIFY toolsChanged)

public:
    explicit CanvasItem(QQuickItem *parent = nullptr);

    Drawing *drawing() const { return m_drawing; }
    /// Not owned. Its area is this item's from now on.
    void setDrawing(Drawing *drawing);
    ToolPalette *tools() const { return m_tools; }
    void setTools(ToolPalette *tools);

Q_SIGNALS:
    void drawingChanged();
    void toolsChanged();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void touchEvent(QTouchEvent *event) override;
    void touchUngrabEvent() override;

private:
    void updateArea();
    void updatePart(const QRect &pixels);
    QImage tile(const QRect &part) const;
    void begin(int pointer, QPointF position);
    void moveTo(int pointer, QPointF position);
    void end(int pointer);

    QPointer<QQuickWindow> m_window;
    QPointer<Drawing> m_drawing;
    QPointer<ToolPalette> m_tools;
    std::optional<int> m_pointer; // that draws
    QRegion m_changed; // pixels, since the last frame
};

} // namespace zenvor
