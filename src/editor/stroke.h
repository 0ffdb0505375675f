#pragma once

#include <QColor>
#include <QList>
#include <QPointF>

namespace zenvor {

enum class DrawingTool {
    Pen,
    Marker, ///< lets the picture through, and as much of it where the stroke crosses itself
    Eraser, ///< takes away what other strokes have drawn, never the picture
};

/// One line of a drawing. Lengths are in widths of the picture and places are seen from its upper left
/// corner, so that a stroke stays on what it marks however large the picture is shown. It may leave the
/// picture.
struct Stroke
{
    DrawingTool tool = DrawingTool::Pen;
    QColor color; ///< opaque; the eraser has none
    qreal width = 0;
    QList<QPointF> points; ///< at least one
};

} // namespace zenvor
