#include "platform/screen.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace zenvor {

QRectF Screen::mainBounds()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? QRectF(screen->geometry()) : QRectF();
}

int Screen::longestSideInPixels()
{
    int longest = 1024;
    for (const auto *screen : QGuiApplication::screens()) {
        const auto pixels = QSizeF(screen->size()) * screen->devicePixelRatio();
        longest = std::max({longest, qRound(pixels.width()), qRound(pixels.height())});
    }
    return longest;
}

} // namespace zenvor
