#include "editor/canvas_item.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <vector>

namespace zenvor {

namespace {

constexpr int mouse = -1; // fingers have numbers from 0
constexpr int tileSide = 256; // pixels

// Of a kind whose place the software renderer knows when a tile is added later.
class TilesNode final : public QSGTransformNode
{
public:
    explicit TilesNode(const DrawingArea &shownArea) : area(shownArea) {}

    const DrawingArea area;
    std::vector<QSGImageNode *> tiles; // by row; null where nothing is drawn; the scene graph's
};

bool isEmpty(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return pixel != 0; }))
            return false;
    }
    return true;
}

} // namespace

CanvasItem::CanvasItem(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
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
    if (drawing)
        updatePart({{}, drawing->area().pixels()});
    Q_EMIT drawingChanged();
}

void CanvasItem::setTools(ToolPalette *tools)
{
    m_tools = tools;
    Q_EMIT toolsChanged();
}

// As large as PictureItem draws on, whose size is in whole points.
void CanvasItem::updateArea()
{
    if (m_drawing && window())
        m_drawing->setArea({qRound(width()), qRound(height())}, window()->effectiveDevicePixelRatio());
}

void CanvasItem::updatePart(const QRect &pixels)
{
    m_changed += pixels;
    update();
}

QImage CanvasItem::tile(const QRect &part) const
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-part.topLeft());
    m_drawing->paint(&painter, part);
    return image;
}

QSGNode *CanvasItem::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<TilesNode *>(old);
    if (!m_drawing) {
        delete node;
        return nullptr;
    }
    const auto &area = m_drawing->area();
    const QRect all({}, area.pixels());
    if (!node || node->area != area) {
        delete node;
        node = new TilesNode(area);
        m_changed = all;
    }
    const int columns = (all.width() + tileSide - 1) / tileSide;
    const int rows = (all.height() + tileSide - 1) / tileSide;
    node->tiles.resize(size_t(columns * rows));
    for (int i = 0; i < columns * rows; ++i) {
        const auto part = QRect(i % columns * tileSide, i / columns * tileSide, tileSide, tileSide) & all;
        if (!m_changed.intersects(part))
            continue;
        auto *&shown = node->tiles.at(size_t(i));
        const auto image = tile(part);
        if (!shown && isEmpty(image))
            continue;
        if (!shown) {
            shown = window()->createImageNode();
            shown->setOwnsTexture(true);
            shown->setFiltering(QSGTexture::Nearest); // pixels stay as they are
            shown->setRect(
                QRectF(QPointF(part.topLeft()) / area.density, QSizeF(part.size()) / area.density));
        }
        shown->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
        shown->setSourceRect({{}, part.size()});
        if (!shown->parent())
            node->appendChildNode(shown);
    }
    m_changed = {};
    return node;
}

// Items are not told of a stylus, only handlers are, such as the host's. What no window takes Qt sends once
// more as a mouse.
bool CanvasItem::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        event->ignore();
        return true;
    default:
        return QQuickItem::eventFilter(watched, event);
    }
}

void CanvasItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    updateArea();
}

void CanvasItem::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
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
