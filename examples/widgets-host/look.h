#pragma once

#include <QLabel>

/// Fusion in the colours of the app, light or dark, with controls that a finger can hit.
namespace look {

constexpr int margin = 16;
constexpr int gap = 12;
constexpr int smallGap = 6;
constexpr int radius = 12;
constexpr int touchHeight = 44;
constexpr int tileSize = 72;
constexpr int columnWidth = 340;
constexpr int dialogWidth = 320;
constexpr int coverHeight = 200;
constexpr int readingWidth = 640;

constexpr int titleSize = 20;
constexpr int textSize = 15;
constexpr int smallSize = 13;

/// To be called once, before the first widget.
void setUp();

bool isDark();
void setDark(bool dark);

QFont font(int pixelSize, QFont::Weight weight = QFont::Normal);

/// Plain text that wraps. The quiet one is what PlaceholderText is in the palette.
QLabel *label(const QString &text, int pixelSize = textSize, QFont::Weight weight = QFont::Normal);
QLabel *quietLabel(const QString &text, int pixelSize = textSize);

} // namespace look
