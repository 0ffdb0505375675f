#pragma once

#include "editor/stroke.h"

#include <QObject>

namespace zenvor {

/// What the user has chosen to draw with. Each instance begins with a red pen of middle width.
class ToolPalette : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Tool tool READ tool WRITE setTool NOTIFY changed)
    Q_PROPERTY(int colorIndex READ colorIndex WRITE setColorIndex NOTIFY changed)
    Q_PROPERTY(int widthIndex READ widthIndex WRITE setWidthIndex NOTIFY changed)
    Q_PROPERTY(QList<QColor> colors READ colors CONSTANT)
    Q_PROPERTY(QStringList colorNames READ colorNames CONSTANT)

public:
    enum Tool {
        Pen = int(DrawingTool::Pen),
        Marker = int(DrawingTool::Marker),
        Eraser = int(DrawingTool::Eraser),
    };
    Q_ENUM(Tool)

    static constexpr int widthCount = 3;

    Tool tool() const { return m_tool; }
    void setTool(Tool tool);
    int colorIndex() const { return m_colorIndex; }
    /// Nothing if there is no such colour; so for the widths. To choose a colour for the eraser chooses the
    /// pen: the user wants to draw.
    void setColorIndex(int index);
    int widthIndex() const { return m_widthIndex; }
    void setWidthIndex(int index);

    QList<QColor> colors() const;
    /// In the language of the texts, in the order of the colours.
    QStringList colorNames() const;

    DrawingTool drawingTool() const { return DrawingTool(m_tool); }
    QColor color() const { return colors().at(m_colorIndex); }
    /// In points: a marker is wider than a pen, and an eraser wider still.
    qreal width() const;

Q_SIGNALS:
    void changed();

private:
    Tool m_tool = Pen;
    int m_colorIndex = 2;
    int m_widthIndex = 1;
};

} // namespace zenvor
