#include "resources/symbol_paths.h"

#include <QLineF>
#include <QPainterPathStroker>
#include <QTransform>

#include <initializer_list>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

QPainterPath polyline(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    for (const auto &point : points) {
        if (path.elementCount() == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    return path;
}

QPainterPath stroked(const QPainterPath &line, qreal width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    return stroker.createStroke(line).simplified();
}

QPainterPath ladybug()
{
    QPainterPath body;
    body.addEllipse(QPointF(12, 14.2), 6.8, 7.3);
    QPainterPath head;
    head.addEllipse(QPointF(12, 6.2), 3.6, 3.2);
    auto legs = polyline({{6.2, 10.5}, {2.8, 8.2}});
    legs.addPath(polyline({{5.4, 14.6}, {1.8, 14.6}}));
    legs.addPath(polyline({{6.4, 18.4}, {3.0, 20.8}}));
    legs.addPath(polyline({{17.8, 10.5}, {21.2, 8.2}}));
    legs.addPath(polyline({{18.6, 14.6}, {22.2, 14.6}}));
    legs.addPath(polyline({{17.6, 18.4}, {21.0, 20.8}}));
    legs.addPath(polyline({{10.4, 3.6}, {8.6, 1.6}}));
    legs.addPath(polyline({{13.6, 3.6}, {15.4, 1.6}}));
    QPainterPath marks = stroked(polyline({{12, 9.4}, {12, 22}}), 1.1);
    for (const auto &spot :
         {QPointF(8.9, 12.6), QPointF(15.1, 12.6), QPointF(9.2, 17.2), QPointF(14.8, 17.2)})
        marks.addEllipse(spot, 1.2, 1.2);
    return body.subtracted(marks).united(head).united(stroked(legs, 1.5));
}

QPainterPath megaphone()
{
    QPainterPath horn;
    horn.moveTo(4.4, 9.0);
    horn.lineTo(9.6, 9.0);
    horn.lineTo(18.6, 4.2);
    horn.lineTo(18.6, 18.6);
    horn.lineTo(9.6, 14.2);
    horn.lineTo(4.4, 14.2);
    horn.quadTo(2.2, 14.2, 2.2, 11.6);
    horn.quadTo(2.2, 9.0, 4.4, 9.0);
    QPainterPath handle = polyline({{5.4, 15.2}, {9.2, 15.2}, {10.6, 20.2}, {7.0, 20.2}});
    handle.closeSubpath();
    auto sound = polyline({{20.6, 9.4}, {21.9, 11.4}, {20.6, 13.4}});
    return horn.united(handle).united(stroked(sound, 1.4));
}

QPainterPath xmark()
{
    auto lines = polyline({{4.5, 4.5}, {19.5, 19.5}});
    lines.addPath(polyline({{19.5, 4.5}, {4.5, 19.5}}));
    return stroked(lines, 3.2);
}

QPainterPath xmarkOnDisc()
{
    QPainterPath disc;
    disc.addEllipse(QPointF(12, 12), 10.5, 10.5);
    auto lines = polyline({{8.3, 8.3}, {15.7, 15.7}});
    lines.addPath(polyline({{15.7, 8.3}, {8.3, 15.7}}));
    return disc.subtracted(stroked(lines, 2));
}

QPainterPath pencil()
{
    auto shaft = polyline({{4.2, 15.8}, {15.4, 4.6}, {19.4, 8.6}, {8.2, 19.8}});
    shaft.closeSubpath();
    auto tip = polyline({{3.2, 17.6}, {6.4, 20.8}, {2.0, 22.0}});
    tip.closeSubpath();
    auto end = polyline({{16.8, 3.2}, {18.2, 1.8}, {22.2, 5.8}, {20.8, 7.2}});
    end.closeSubpath();
    return shaft.united(tip).united(end);
}

QPainterPath triangleToTheRight()
{
    auto triangle = polyline({{6, 3.5}, {21, 12}, {6, 20.5}});
    triangle.closeSubpath();
    return stroked(triangle, 1.5).united(triangle);
}

QPainterPath paperplane()
{
    auto left = polyline({{1.6, 10.4}, {21.4, 2.0}, {8.0, 14.2}});
    left.closeSubpath();
    auto right = polyline({{9.8, 15.6}, {22.6, 3.2}, {14.2, 22.4}});
    right.closeSubpath();
    return stroked(left, 1).united(left).united(stroked(right, 1)).united(right);
}

QPainterPath video()
{
    QPainterPath box;
    box.addRoundedRect(1.5, 5.5, 14, 13, 3, 3);
    auto lens = polyline({{17.5, 10.5}, {22.5, 7}, {22.5, 17}, {17.5, 13.5}});
    lens.closeSubpath();
    return box.united(lens);
}

QPainterPath folder()
{
    QPainterPath tab;
    tab.addRoundedRect(2, 4, 9, 6, 2, 2);
    QPainterPath body;
    body.addRoundedRect(2, 6.5, 20, 13.5, 2.5, 2.5);
    return tab.united(body);
}

// Hills below a sun, in a frame.
QPainterPath photo()
{
    QPainterPath frame;
    frame.addRoundedRect(2, 4, 20, 16, 3, 3);
    QPainterPath sun;
    sun.addEllipse(QPointF(8, 9.5), 1.9, 1.9);
    auto hills = polyline({{4.5, 17.5}, {9.5, 12.8}, {12, 15}, {16, 10.5}, {19.5, 14.5}, {19.5, 17.5}});
    hills.closeSubpath();
    return frame.subtracted(sun).subtracted(hills);
}

QPainterPath twoBars()
{
    QPainterPath bars;
    bars.addRoundedRect(5, 3.5, 5, 17, 1.5, 1.5);
    bars.addRoundedRect(14, 3.5, 5, 17, 1.5, 1.5);
    return bars;
}

// A ring of bars, each a little longer than the one before it.
QPainterPath rays()
{
    constexpr int count = 8;
    QPainterPath lines;
    for (int i = 0; i < count; ++i) {
        const auto direction = QLineF::fromPolar(1, i * 360.0 / count).p2();
        const QPointF center(12, 12);
        lines.addPath(polyline({center + direction * (8.5 - i * 0.4), center + direction * 10.5}));
    }
    return stroked(lines, 2);
}

// A nib that draws a line.
QPainterPath pen()
{
    auto nib = polyline({{12, 2.2}, {16.6, 12.2}, {13.6, 18}, {10.4, 18}, {7.4, 12.2}});
    nib.closeSubpath();
    QPainterPath hole;
    hole.addEllipse(QPointF(12, 12), 1.5, 1.5);
    const auto slit = stroked(polyline({{12, 4.5}, {12, 11}}), 1);
    QPainterPath collar;
    collar.addRoundedRect(8.8, 19.4, 6.4, 2.6, 0.8, 0.8);
    return nib.subtracted(hole).subtracted(slit).united(collar);
}

// A felt tip, cut at an angle, over what it marks.
QPainterPath marker()
{
    auto shaft = polyline({{14.4, 1.8}, {21.2, 8.6}, {14.2, 15.6}, {7.4, 8.8}});
    shaft.closeSubpath();
    auto tip = polyline({{6.2, 10.4}, {12.6, 16.8}, {9.6, 18.4}, {3.4, 18.4}});
    tip.closeSubpath();
    return shaft.united(tip).united(stroked(polyline({{3, 21.4}, {21, 21.4}}), 2));
}

// A block, the lower part of which is worn.
QPainterPath eraser()
{
    auto block = polyline({{13.6, 3.4}, {21, 10.8}, {11.4, 20.4}, {7.4, 20.4}, {3, 16}, {3, 14}});
    block.closeSubpath();
    const auto cut = stroked(polyline({{6.6, 8.6}, {16.2, 18.2}}), 1.4);
    return stroked(block, 1.2)
        .united(block)
        .subtracted(cut)
        .united(stroked(polyline({{13.4, 21}, {21, 21}}), 1.4));
}

QPainterPath arrowBack()
{
    QPainterPath line(QPointF(4.5, 9));
    line.lineTo(14.5, 9);
    line.cubicTo(22, 9, 22, 20, 14.5, 20);
    line.lineTo(8, 20);
    line.addPath(polyline({{9, 4}, {4, 9}, {9, 14}}));
    return stroked(line, 2.4);
}

QPainterPath arrowForward()
{
    return QTransform::fromScale(-1, 1).map(arrowBack()).translated(symbolSize, 0);
}

} // namespace

QPainterPath symbolPath(const QString &name)
{
    if (name == "ladybug.fill"_L1)
        return ladybug();
    if (name == "megaphone.fill"_L1)
        return megaphone();
    if (name == "xmark"_L1)
        return xmark();
    if (name == "xmark.circle.fill"_L1)
        return xmarkOnDisc();
    if (name == "pencil"_L1)
        return pencil();
    if (name == "play.fill"_L1)
        return triangleToTheRight();
    if (name == "paperplane.fill"_L1)
        return paperplane();
    if (name == "chevron.down"_L1)
        return stroked(polyline({{3.5, 8}, {12, 16.5}, {20.5, 8}}), 3);
    if (name == "checkmark"_L1)
        return stroked(polyline({{4, 13}, {9.5, 19}, {20, 5}}), 3);
    if (name == "video"_L1)
        return video();
    if (name == "folder.fill"_L1)
        return folder();
    if (name == "photo"_L1)
        return photo();
    if (name == "pause.fill"_L1)
        return twoBars();
    if (name == "rays"_L1)
        return rays();
    if (name == "pencil.tip"_L1)
        return pen();
    if (name == "highlighter"_L1)
        return marker();
    if (name == "eraser.fill"_L1)
        return eraser();
    if (name == "arrow.uturn.backward"_L1)
        return arrowBack();
    if (name == "arrow.uturn.forward"_L1)
        return arrowForward();
    if (name == "chevron.up"_L1)
        return stroked(polyline({{3.5, 16.5}, {12, 8}, {20.5, 16.5}}), 3);
    return {};
}

} // namespace zenvor
