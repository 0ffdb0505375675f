#pragma once

#include "resources/picture_drawing.h"

#include <QPointF>

namespace zenvor {

/// Where a drawing is shown: an area on a screen with a picture in its middle.
struct DrawingArea
{
    QSize points;
    qreal density = 1; ///< pixels a point
    QSize picture; ///< its own size, which gives the shape; one that is empty fills the area

    QSize pixels() const { return points * density; }
    /// In pixels of the area.
    QRect pictureRect() const
    {
        return picture.isEmpty() ? QRect({}, pixels()) : aspectFit(picture, pixels());
    }

    /// Between points of the area and the measure of a Stroke.
    QPointF toStroke(QPointF position) const
    {
        const QRectF rect = pictureRect();
        return (position * density - rect.topLeft()) / rect.width();
    }
    qreal toStroke(qreal length) const { return length * density / pictureRect().width(); }

    bool isEmpty() const { return pixels().isEmpty() || pictureRect().isEmpty(); }
    friend bool operator==(const DrawingArea &, const DrawingArea &) = default;
};

} // namespace zenvor
