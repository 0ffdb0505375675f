#pragma once

#include <QRect>
#include <QSize>

class QImage;
class QPainter;

namespace zenvor {

/// Where a picture of the size \a picture is in the middle of \a area, as large as it fits with all of it.
QRect aspectFit(QSize picture, QSize area);

/// Draws \a part of \a image into \a target, smoothly scaled, with \a density pixels for each unit of
/// \a target.
void drawPicture(QPainter *painter, const QImage &image, const QRectF &part, const QRectF &target,
                 qreal density);

} // namespace zenvor
