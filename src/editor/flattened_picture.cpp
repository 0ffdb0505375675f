#include "editor/flattened_picture.h"

#include <QPainter>

namespace zenvor {

QImage flattened(const QImage &picture, Drawing &drawing)
{
    const auto &area = drawing.area();
    if (area.isEmpty())
        return picture;
    const auto strokes = drawing.finished();
    QImage result(area.pixels(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    drawPicture(&painter, picture, picture.rect(), area.pictureRect(), 1);
    painter.drawImage(0, 0, strokes);
    painter.end();
    result.setDevicePixelRatio(area.density);
    return result;
}

} // namespace zenvor
