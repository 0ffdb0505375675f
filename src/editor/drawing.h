#pragma once

#include "editor/stroke_layer.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace zenvor {

/// What a user has drawn on a picture: the strokes, which of them can be taken back and drawn again, and what
/// they look like in the area where they are shown. Main thread.
class Drawing : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(bool isDrawing READ isDrawing NOTIFY changed)

public:
    /// On a picture of that size, in its pixels.
    explicit Drawing(QSize picture);

    /// Nothing is drawn, and nothing can be, before there is an area. When it changes, the strokes stay where
    /// they are on the picture, the one under way included. With thousands of strokes they are seen less
    /// sharp for a moment.
    void setArea(QSize points, qreal density);
    const DrawingArea &area() const { return m_layer->area(); }

    bool isDrawing() const { return m_layer->running(); }
    bool canUndo() const { return !m_strokes.isEmpty(); }
    bool canRedo() const { return !m_undone.isEmpty(); }

    /// One stroke at a time: to begin one ends the one before. \a width and \a position in points of the
    /// area.
    void begin(DrawingTool tool, const QColor &color, qreal width, QPointF position);
    /// Nothing if no stroke is under way; so for the others.
    void extend(QPointF position);
    void end();
    void cancel();

    /// Not while a stroke is under way.
    Q_INVOKABLE void undo();
    Q_INVOKABLE void redo();
    /// Forgets all strokes, also those that could be drawn again.
    void clear();

    /// Draws \a part, in pixels of the area, into a painter that paints pixels.
    void paint(QPainter *painter, const QRect &part) const { m_layer->paint(painter, part); }

    /// All of it, in the size of the area in pixels. Ends the stroke that is under way.
    const QImage &finished();

Q_SIGNALS:
    void changed();
    /// \a part, in pixels of the area, looks different.
    void updated(const QRect &part);

private:
    void redraw();
    void drawOn(int milliseconds);
    bool isRedrawing() const { return bool(m_next); }

    QList<Stroke> m_strokes;
    QList<Stroke> m_undone; // the first undone first
    std::unique_ptr<StrokeLayer> m_layer;
    std::unique_ptr<StrokeLayer> m_next; // takes its place when it has all strokes; null if there is no need
    QTimer m_drawOn;
};

} // namespace zenvor
