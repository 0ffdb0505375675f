#include "look.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>

using namespace Qt::StringLiterals;

namespace look {

namespace {

class Style final : public QProxyStyle
{
public:
    Style() : QProxyStyle(u"Fusion"_s) {}

    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                           const QWidget *widget) const override
    {
        QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
        switch (type) {
        case CT_PushButton:
        case CT_ComboBox:
        case CT_LineEdit:
        case CT_TabBarTab:
            result.setHeight(std::max(result.height(), touchHeight));
            break;
        case CT_MenuItem:
            result.rheight() += smallGap;
            break;
        default:
            break;
        }
        return result;
    }
};

QPalette palette(bool dark)
{
    const QColor window = dark ? 0x161A17 : 0xF4F6F1;
    const QColor card = dark ? 0x212722 : 0xFFFFFF;
    const QColor button = dark ? 0x2B322C : 0xEBEFE7;
    const QColor line = dark ? 0x39423B : 0xD6DCD1;
    const QColor text = dark ? 0xEDF2EC : 0x20261F;
    const QColor quiet = dark ? 0xA3AEA4 : 0x667064;
    const QColor accent = dark ? 0x7FC08E : 0x3A7549;

    QPalette palette(text, button, dark ? line : Qt::white, dark ? Qt::black : line, line, text, Qt::white,
                     card, window);
    palette.setColor(QPalette::Midlight, line);
    palette.setColor(QPalette::AlternateBase, button);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::PlaceholderText, quiet);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, dark ? window : card);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::ToolTipBase, card);
    palette.setColor(QPalette::ToolTipText, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, quiet);
    return palette;
}

} // namespace

void setUp()
{
    QApplication::setStyle(new Style);
    QApplication::setFont(font(textSize));
    setDark(false);
}

bool isDark()
{
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

void setDark(bool dark)
{
    QApplication::setPalette(palette(dark)); // by which the library knows, too
}

QFont font(int pixelSize, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

QLabel *label(const QString &text, int pixelSize, QFont::Weight weight)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFont(font(pixelSize, weight));
    return label;
}

QLabel *quietLabel(const QString &text, int pixelSize)
{
    auto *quiet = label(text, pixelSize);
    quiet->setForegroundRole(QPalette::PlaceholderText);
    return quiet;
}

} // namespace look
