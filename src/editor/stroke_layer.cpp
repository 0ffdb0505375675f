#include "editor/stroke_layer.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace zenvor {

namespace {

constexpr int tileSide = 64;

// A curve is drawn in pieces as a whole: where pieces meet, smooth edges lie over each other, which would
// make the edges of a stroke rough if each of its points began a piece.
constexpr int mostElements = 64;
constexpr qreal longestPiece = 128; // pixels

constexpr qsizetype mostBefore = 4 * 1024 * 1024; // runs, of eight bytes: thousands of strokes
constexpr qreal markerOpacity = 0.4;

QImage emptyImage(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void copyPixels(QImage &target, const QRect &part, const QImage &source, QPoint corner)
{
    QPainter painter(&target);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(part.topLeft(), source, QRect(corner, part.size()));
}

qreal opacity(DrawingTool tool)
{
    return tool == DrawingTool::Marker ? markerOpacity : 1;
}

} // namespace

StrokeLayer::StrokeLayer(const DrawingArea &area)
    : m_area(area)
    , m_image(emptyImage(area.pixels()))
    , m_runningImage(emptyImage(area.pixels()))
{
}

StrokeLayer StrokeLayer::stretched(const StrokeLayer &other, const DrawingArea &area)
{
    StrokeLayer layer(area);
    layer.m_count = other.m_count;
    if (area.isEmpty() || other.m_area.isEmpty())
        return layer;
    const QRectF from = other.m_area.pictureRect();
    const QRectF to = area.pictureRect();
    QPainter painter(&layer.m_image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(to.topLeft());
    painter.scale(to.width() / from.width(), to.width() / from.width());
    painter.drawImage(-from.topLeft(), other.m_image);
    return layer;
}

QRect StrokeLayer::add(const Stroke &stroke, bool isForGood)
{
    start(stroke, isForGood);
    for (qsizetype i = 1; i < stroke.points.size(); ++i)
        advance(toPixels(stroke.points.at(i)));
    drawTail();
    return end();
}

std::optional<QRect> StrokeLayer::takeBack()
{
    if (m_before.empty())
        return {};
    const auto before = std::move(m_before.back());
    m_before.pop_back();
    for (const auto &tile : before)
        m_beforeSize -= qsizetype(tile.runs.size());
    --m_count;
    return restore(before);
}

QRect StrokeLayer::begin(const Stroke &stroke)
{
    start(stroke, false);
    return drawTail();
}

QRect StrokeLayer::extend(QPointF point)
{
    m_running->stroke.points.append(point);
    const auto removed = removeTail();
    const auto drawn = advance(toPixels(point));
    return removed | drawn | drawTail();
}

QRect StrokeLayer::end()
{
    if (!m_running->isForGood) {
        keep(std::move(m_running->before));
    } else {
        m_before.clear();
        m_beforeSize = 0;
    }
    if (m_running->stroke.tool != DrawingTool::Eraser) {
        QPainter painter(&m_image);
        painter.setOpacity(opacity(m_running->stroke.tool));
        for (const int tile : m_running->tiles)
            painter.drawImage(tileRect(tile).topLeft(), m_runningImage, tileRect(tile));
    }
    ++m_count;
    return closeRunning();
}

QRect StrokeLayer::cancel()
{
    restore(m_running->before);
    return closeRunning();
}

// The part that was drawn on is the part in which all may have changed.
QRect StrokeLayer::closeRunning()
{
    QRect changed;
    QPainter painter(&m_runningImage);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const int tile : m_running->tiles) {
        painter.fillRect(tileRect(tile), Qt::transparent);
        changed |= tileRect(tile);
    }
    m_running.reset();
    return changed;
}

void StrokeLayer::start(const Stroke &stroke, bool isForGood)
{
    const auto first = toPixels(stroke.points.constFirst());
    m_running = Running{stroke, isForGood, first, first, QPainterPath(first), {}, {}, {}, {}};
}

// From the middle between two points to the next such middle: there are no corners where the curves meet.
QRect StrokeLayer::advance(QPointF position)
{
    auto &running = *m_running;
    running.middle = (running.last + position) / 2;
    running.curve.quadTo(running.last, running.middle);
    running.last = position;
    const auto reach = running.curve.controlPointRect().size();
    if (running.curve.elementCount() < mostElements && std::max(reach.width(), reach.height()) < longestPiece)
        return {};
    return draw(std::exchange(running.curve, QPainterPath(running.middle)));
}

// The curve ends half way to the pointer. What is missing is drawn too, but only until there is a next point:
// the curve does not go through this one.
QRect StrokeLayer::drawTail()
{
    auto path = m_running->curve;
    path.lineTo(m_running->last + QPointF(0.01, 0)); // a path without length would not be drawn
    m_running->tail = reachOf(path);
    if (!m_running->tail.isEmpty())
        m_running->belowTail = target().copy(m_running->tail);
    return draw(path);
}

QRect StrokeLayer::removeTail()
{
    const auto part = std::exchange(m_running->tail, {});
    if (!part.isEmpty())
        copyPixels(target(), part, m_running->belowTail, {});
    return part;
}

QRect StrokeLayer::draw(const QPainterPath &path)
{
    const auto changed = reachOf(path);
    if (changed.isEmpty())
        return {};
    touch(changed);
    const auto &stroke = m_running->stroke;
    const bool erases = stroke.tool == DrawingTool::Eraser;
    QPainter painter(&target());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(erases ? QPainter::CompositionMode_Clear
                                      : QPainter::CompositionMode_SourceOver);
    const QColor color = erases ? QColor(Qt::black) : stroke.color;
    painter.strokePath(path, QPen(color, widthInPixels(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return changed;
}

// With what its smooth edges take.
QRect StrokeLayer::reachOf(const QPainterPath &path) const
{
    const auto reach = widthInPixels() / 2 + 2;
    return path.controlPointRect().adjusted(-reach, -reach, reach, reach).toAlignedRect() & m_image.rect();
}

qreal StrokeLayer::widthInPixels() const
{
    return m_running->stroke.width * m_area.pictureRect().width();
}

void StrokeLayer::touch(const QRect &part)
{
    if (part.isEmpty())
        return;
    for (int row = part.top() / tileSide; row <= part.bottom() / tileSide; ++row) {
        for (int column = part.left() / tileSide; column <= part.right() / tileSide; ++column) {
            const int tile = row * columns() + column;
            if (m_running->tiles.insert(tile).second && !m_running->isForGood)
                m_running->before.push_back(snapshot(tile));
        }
    }
}

// As runs of equal pixels: drawings have large even parts, and no general packer is as quick.
StrokeLayer::Tile StrokeLayer::snapshot(int tile) const
{
    const auto part = tileRect(tile);
    Tile result{tile, {}};
    auto &runs = result.runs;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(m_image.constScanLine(y));
        for (int x = part.left(), end = x; x <= part.right(); x = end) {
            while (end <= part.right() && line[end] == line[x])
                ++end;
            if (!runs.empty() && runs.back().pixel == line[x])
                runs.back().length += end - x;
            else
                runs.push_back({end - x, line[x]});
        }
    }
    runs.shrink_to_fit();
    return result;
}

QRect StrokeLayer::restore(const Before &before)
{
    QRect changed;
    for (const auto &tile : before) {
        const auto part = tileRect(tile.index);
        changed |= part;
        auto run = tile.runs.begin();
        int left = run->length;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            auto *const line = reinterpret_cast<QRgb *>(m_image.scanLine(y));
            for (int x = part.left(); x <= part.right(); ++x, --left) {
                if (left == 0)
                    left = (++run)->length;
                line[x] = run->pixel;
            }
        }
    }
    return changed;
}

void StrokeLayer::keep(Before before)
{
    for (const auto &tile : before)
        m_beforeSize += qsizetype(tile.runs.size());
    m_before.push_back(std::move(before));
    while (m_beforeSize > mostBefore) {
        for (const auto &tile : m_before.front())
            m_beforeSize -= qsizetype(tile.runs.size());
        m_before.pop_front();
    }
}

void StrokeLayer::paint(QPainter *painter, const QRect &part) const
{
    painter->drawImage(part.topLeft(), m_image, part);
    if (!m_running || m_running->stroke.tool == DrawingTool::Eraser)
        return;
    painter->setOpacity(opacity(m_running->stroke.tool));
    painter->drawImage(part.topLeft(), m_runningImage, part);
    painter->setOpacity(1);
}

QRect StrokeLayer::tileRect(int tile) const
{
    return QRect(tile % columns() * tileSide, tile / columns() * tileSide, tileSide, tileSide)
        & m_image.rect();
}

int StrokeLayer::columns() const
{
    return (m_image.width() + tileSide - 1) / tileSide;
}

QPointF StrokeLayer::toPixels(QPointF point) const
{
    const QRectF picture = m_area.pictureRect();
    return point * picture.width() + picture.topLeft();
}

QImage &StrokeLayer::target()
{
    return m_running->stroke.tool == DrawingTool::Eraser ? m_image : m_runningImage;
}

} // namespace zenvor
