#include <zenvor/motion_event.h>
#include <zenvor/shake.h>

#include "platform/executor.h"
#include "platform/window.h"

#include <QCoreApplication>
#include <QString>
#include <QWindow>

namespace zenvor {

const QString &zenvorWindowDidShake()
{
    static const auto *name = new QString(QStringLiteral("com.zenvor.sdk.windowDidShake"));
    return *name;
}

bool sendShake()
{
    QWindow *window = MainActor::isCurrentThread() ? keyWindow() : nullptr;
    if (!window)
        return false;
    MotionEvent event(MotionEvent::Subtype::Shake);
    QCoreApplication::sendEvent(window, &event);
    return true;
}

} // namespace zenvor
