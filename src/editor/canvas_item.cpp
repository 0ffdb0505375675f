#include "editor/canvas_item.h"

#include <QPainter>
#include <QQuickWindow>

namespace zenvor {

namespace {

constexpr int mouse = -1; // fingers have numbers from 0

}

CanvasItem::CanvasItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptTouchEvents(true);
    setCursor(Qt::CrossCursor);
    // A handler of the host's behind would take a pointer over once it has moved far enough.
    setKeepMouseGrab(true);
    setKeepTouchGrab(true);
}

void CanvasItem::setDrawing(Drawing *drawing)
{
    if (m_drawing)
        m_drawing->disconnect(this);
    m_drawing = drawing;
    if (drawing)
        connect(drawing, &Drawing::updated, this, &CanvasItem::updatePart);
    updateArea();
    update();
    Q_EMIT drawingChanged();
}

void CanvasItem::setTools(ToolPalette *tools)
{
    m_tools = tools;
    Q_EMIT toolsChanged();
}

// As large as the surface that Qt Quick gives the item, so that pixels are copied as they are.
void CanvasItem::updateArea()
{
    if (m_drawing && window())
        m_drawing->setArea({qRound(width()), qRound(height())}, window()->effectiveDevicePixelRatio());
}

void CanvasItem::updatePart(const QRect &pixels)
{
    if (pixels.isEmpty())
        return;
    const auto density = m_drawing->area().density;
    const QRectF points(QPointF(pixels.topLeft()) / density, QSizeF(pixels.size()) / density);
    update(points.toAlignedRect());
}

void CanvasItem::paint(QPainter *painter)
{
    if (!m_drawing)
        return;
    const auto part = painter->transform().mapRect(painter->clipBoundingRect()).toAlignedRect();
    const QRect all({}, m_drawing->area().pixels());
    painter->resetTransform();
    m_drawing->paint(painter, painter->hasClipping() ? part & all : all);
}

// Items are not told of a stylus, only handlers are, such as the host's. What no window takes Qt sends once more
// as a mouse.
bool CanvasItem::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        event->ignore();
        return true;
    default:
        return QQuickPaintedItem::eventFilter(watched, event);
    }
}

void CanvasItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    updateArea();
}

void CanvasItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickPaintedItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        if (m_window)
            m_window->removeEventFilter(this);
        m_window = data.window;
        if (m_window)
            m_window->installEventFilter(this);
    }
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged)
        updateArea();
}

void CanvasItem::begin(int pointer, QPointF position)
{
    if (m_pointer || !m_drawing || !m_tools)
        return;
    m_pointer = pointer;
    m_drawing->begin(m_tools->drawingTool(), m_tools->color(), m_tools->width(), position);
}

void CanvasItem::moveTo(int pointer, QPointF position)
{
    if (m_pointer == pointer && m_drawing)
        m_drawing->extend(position);
}

void CanvasItem::end(int pointer)
{
    if (m_pointer != pointer)
        return;
    m_pointer.reset();
    if (m_drawing)
        m_drawing->end();
}

void CanvasItem::mousePressEvent(QMouseEvent *event)
{
    begin(mouse, event->position());
}

void CanvasItem::mouseMoveEvent(QMouseEvent *event)
{
    moveTo(mouse, event->position());
}

void CanvasItem::mouseReleaseEvent(QMouseEvent *event)
{
    moveTo(mouse, event->position());
    end(mouse);
}

// What was drawn until then stays: nobody has said that it was not meant.
void CanvasItem::mouseUngrabEvent()
{
    end(mouse);
}

void CanvasItem::touchEvent(QTouchEvent *event)
{
    event->accept();
    if (event->type() == QEvent::TouchCancel) { // the system took it for something else
        if (m_pointer && m_pointer != mouse && m_drawing)
            m_drawing->cancel();
        if (m_pointer != mouse)
            m_pointer.reset();
        return;
    }
    for (const auto &point : event->points()) {
        switch (point.state()) {
        case QEventPoint::Pressed:
            begin(point.id(), point.position());
            break;
        case QEventPoint::Updated:
            moveTo(point.id(), point.position());
            break;
        case QEventPoint::Released:
            moveTo(point.id(), point.position());
            end(point.id());
            break;
        default:
            break;
        }
    }
}

void CanvasItem::touchUngrabEvent()
{
    if (m_pointer && m_pointer != mouse)
        end(*m_pointer);
}

} // namespace zenvor
