#include "resources/system_looks.h"

#include <QFontDatabase>

namespace zenvor {

SystemColors::SystemColors()
{
    connect(&Appearance::shared(), &Appearance::changed, this, &SystemColors::changed);
}

QFont Fonts::make(int size, int weight) const
{
    QFont font(QFontDatabase::systemFont(QFontDatabase::GeneralFont).families());
    font.setPixelSize(size);
    font.setWeight(QFont::Weight(weight));
    font.setItalic(false);
    font.setUnderline(false);
    font.setCapitalization(QFont::MixedCase);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0);
    font.setWordSpacing(0);
    return font;
}

} // namespace zenvor
