#pragma once

#include "editor/drawing_area.h"
#include "editor/stroke.h"

#include <QImage>
#include <QPainterPath>

#include <deque>
#include <optional>
#include <set>
#include <vector>

class QPainter;

namespace zenvor {

/// Strokes as pixels, on a transparent ground, and how to take the last ones back without drawing the others
/// again. One stroke can be under way at a time. What an operation gives is the part of the layer that it
/// has changed, in pixels.
class StrokeLayer
{
public:
    explicit StrokeLayer(const DrawingArea &area);

    /// What \a other shows, made to fit \a area: something to look at until the strokes are drawn anew. Takes
    /// nothing back.
    static StrokeLayer stretched(const StrokeLayer &other, const DrawingArea &area);

    const DrawingArea &area() const { return m_area; }
    /// Without the stroke that is under way.
    const QImage &image() const { return m_image; }
    /// How many strokes it shows, without the one that is under way.
    qsizetype count() const { return m_count; }

    /// Only the last of the strokes that are added can be taken back, as far back as none \a isForGood: to
    /// remember how it was before takes longer than to draw.
    QRect add(const Stroke &stroke, bool isForGood = false);

    /// The last stroke, or nothing, and nothing has changed, if how it was before is forgotten.
    std::optional<QRect> takeBack();

    /// A stroke with one point, which goes on from there.
    QRect begin(const Stroke &stroke);
    QRect extend(QPointF point);
    QRect end();
    /// As if it had not begun.
    QRect cancel();
    /// Null if none is under way.
    const Stroke *running() const { return m_running ? &m_running->stroke : nullptr; }

    /// Draws \a part, in pixels, into a painter that paints pixels.
    void paint(QPainter *painter, const QRect &part) const;

private:
    struct Run
    {
        int length;
        QRgb pixel;
    };

    /// A square of the image as it was before a stroke.
    struct Tile
    {
        int index;
        std::vector<Run> runs;
    };
    using Before = std::vector<Tile>;

    struct Running
    {
        Stroke stroke;
        bool isForGood;
        QPointF last; // in pixels
        QPointF middle; // between the last two points, to which the curve goes so far
        QPainterPath curve; // the end of it, which is not drawn for good
        std::set<int> tiles; // that it touches
        Before before;
        QRect tail; // the part of the target that is not for good
        QImage belowTail;
    };

    void start(const Stroke &stroke, bool isForGood);
    QRect advance(QPointF position);
    QRect drawTail();
    QRect removeTail();
    QRect draw(const QPainterPath &path);
    QRect reachOf(const QPainterPath &path) const;
    qreal widthInPixels() const;
    QRect closeRunning();
    void touch(const QRect &part);
    Tile snapshot(int tile) const;
    QRect restore(const Before &before);
    void keep(Before before);
    QRect tileRect(int tile) const;
    int columns() const;
    QPointF toPixels(QPointF point) const;
    QImage &target();

    DrawingArea m_area;
    QImage m_image;
    QImage m_runningImage; // of a stroke that is put on the image as a whole when it ends
    qsizetype m_count = 0;
    std::optional<Running> m_running;
    std::deque<Before> m_before; // of the last strokes
    qsizetype m_beforeSize = 0; // runs
};

} // namespace zenvor
