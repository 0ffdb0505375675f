#include "editor/tool_palette.h"

#include "resources/string_table.h"

#include <QStringList>

#include <array>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// Such as can be told from each other and from most pictures, in light and in dark.
constexpr std::array colorValues{
    0xff000000, 0xffffffff, 0xffff3b30, 0xffff9500, 0xffffcc00, 0xff34c759, 0xff007aff, 0xffaf52de,
};

constexpr std::array<qreal, ToolPalette::widthCount> penWidths{2, 5, 10};

} // namespace

// Also told of what stays: a button that was pressed asks anew whether it is the chosen one.
void ToolPalette::setTool(Tool tool)
{
    m_tool = tool;
    Q_EMIT changed();
}

void ToolPalette::setColorIndex(int index)
{
    if (index < 0 || index >= int(colorValues.size()))
        return;
    m_colorIndex = index;
    if (m_tool == Eraser)
        m_tool = Pen;
    Q_EMIT changed();
}

void ToolPalette::setWidthIndex(int index)
{
    if (index < 0 || index >= widthCount)
        return;
    m_widthIndex = index;
    Q_EMIT changed();
}

QList<QColor> ToolPalette::colors() const
{
    QList<QColor> colors;
    for (const auto value : colorValues)
        colors.append(QColor::fromRgb(value));
    return colors;
}

QStringList ToolPalette::colorNames() const
{
    return {localizedString("zenvor_black_a11y"_ba, u"Black"_s),
            localizedString("zenvor_white_a11y"_ba, u"White"_s),
            localizedString("zenvor_red_a11y"_ba, u"Red"_s),
            localizedString("zenvor_orange_a11y"_ba, u"Orange"_s),
            localizedString("zenvor_yellow_a11y"_ba, u"Yellow"_s),
            localizedString("zenvor_green_a11y"_ba, u"Green"_s),
            localizedString("zenvor_blue_a11y"_ba, u"Blue"_s),
            localizedString("zenvor_purple_a11y"_ba, u"Purple"_s)};
}

qreal ToolPalette::width() const
{
    const auto width = penWidths.at(size_t(m_widthIndex));
    switch (drawingTool()) {
    case DrawingTool::Pen:
        return width;
    case DrawingTool::Marker:
        return 2.5 * width;
    case DrawingTool::Eraser:
        return 4 * width;
    }
    return width;
}

} // namespace zenvor
