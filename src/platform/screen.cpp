#include "platform/screen.h"

#include <QGuiApplication>
#include <QScreen>

namespace zenvor {

QRectF Screen::mainBounds()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? QRectF(screen->geometry()) : QRectF();
}

} // namespace zenvor
