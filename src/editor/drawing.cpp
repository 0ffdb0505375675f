#include "editor/drawing.h"

#include <QDeadlineTimer>

namespace zenvor {

namespace {

// So much at once does not hold up a frame.
constexpr int slice = 8; // ms

// Strokes that can be taken back after all were drawn anew. To remember more would take as long as to draw.
constexpr qsizetype remembered = 100;

} // namespace

Drawing::Drawing(QSize picture) : m_layer(std::make_unique<StrokeLayer>(DrawingArea{{}, 1, picture}))
{
    m_drawOn.setInterval(0);
    connect(&m_drawOn, &QTimer::timeout, this, [this] { drawOn(slice); });
}

void Drawing::setArea(QSize points, qreal density)
{
    const DrawingArea area{points, density, m_layer->area().picture};
    if (area == m_layer->area())
        return;
    const auto *running = m_layer->running();
    const auto stroke = running ? std::optional(*running) : std::nullopt;
    if (running)
        m_layer->cancel();
    m_layer = std::make_unique<StrokeLayer>(m_strokes.isEmpty() ? StrokeLayer(area)
                                                                : StrokeLayer::stretched(*m_layer, area));
    if (!m_strokes.isEmpty())
        redraw();
    if (stroke && !area.isEmpty()) {
        m_layer->begin({stroke->tool, stroke->color, stroke->width, {stroke->points.constFirst()}});
        for (qsizetype i = 1; i < stroke->points.size(); ++i)
            m_layer->extend(stroke->points.at(i));
    }
    Q_EMIT updated({{}, area.pixels()});
    Q_EMIT changed();
}

void Drawing::begin(DrawingTool tool, const QColor &color, qreal width, QPointF position)
{
    end();
    if (area().isEmpty())
        return;
    const auto part = m_layer->begin({tool, color, area().toStroke(width), {area().toStroke(position)}});
    Q_EMIT updated(part);
    Q_EMIT changed();
}

void Drawing::extend(QPointF position)
{
    if (!isDrawing())
        return;
    const auto point = area().toStroke(position);
    if (point != m_layer->running()->points.constLast())
        Q_EMIT updated(m_layer->extend(point));
}

void Drawing::end()
{
    if (!isDrawing())
        return;
    m_strokes.append(*m_layer->running());
    m_undone.clear();
    Q_EMIT updated(m_layer->end());
    if (isRedrawing())
        m_drawOn.start();
    Q_EMIT changed();
}

void Drawing::cancel()
{
    if (!isDrawing())
        return;
    Q_EMIT updated(m_layer->cancel());
    if (isRedrawing())
        m_drawOn.start();
    Q_EMIT changed();
}

void Drawing::undo()
{
    if (isDrawing() || !canUndo())
        return;
    m_undone.append(m_strokes.takeLast());
    if (const auto part = isRedrawing() ? std::nullopt : m_layer->takeBack())
        Q_EMIT updated(*part);
    else
        redraw();
    Q_EMIT changed();
}

void Drawing::redo()
{
    if (isDrawing() || !canRedo())
        return;
    m_strokes.append(m_undone.takeLast());
    if (!isRedrawing()) // which comes to it
        Q_EMIT updated(m_layer->add(m_strokes.constLast()));
    Q_EMIT changed();
}

void Drawing::clear()
{
    m_strokes.clear();
    m_undone.clear();
    m_next.reset();
    m_drawOn.stop();
    m_layer = std::make_unique<StrokeLayer>(area());
    Q_EMIT updated({{}, area().pixels()});
    Q_EMIT changed();
}

const QImage &Drawing::finished()
{
    end();
    if (isRedrawing())
        drawOn(-1);
    return m_layer->image();
}

// All at once if that is quick, which it is with the strokes that a person draws.
void Drawing::redraw()
{
    const bool isUsable =
        m_next && m_next->area() == area() && (m_next->count() <= m_strokes.size() || m_next->takeBack());
    if (!isUsable)
        m_next = std::make_unique<StrokeLayer>(area());
    m_drawOn.start();
    drawOn(slice);
}

// Less than 0 milliseconds: to the end.
void Drawing::drawOn(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (m_next->count() < m_strokes.size()) {
        const auto index = m_next->count();
        m_next->add(m_strokes.at(index), index + remembered < m_strokes.size());
        if (deadline.hasExpired())
            break;
    }
    if (m_next->count() < m_strokes.size())
        return;
    m_drawOn.stop();
    if (isDrawing()) // that stroke is in the other layer, and goes on when it ends
        return;
    m_layer = std::move(m_next);
    Q_EMIT updated({{}, area().pixels()});
}

} // namespace zenvor
