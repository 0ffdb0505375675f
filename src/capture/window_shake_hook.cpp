#include "capture/window_shake_hook.h"

#include "platform/logger.h"

#include <zenvor/motion_event.h>
#include <zenvor/notification_center.h>
#include <zenvor/shake.h>

#include <QGuiApplication>
#include <QPointer>
#include <QScopeGuard>
#include <QThread>
#include <QWindow>

#include <utility>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

class ShakeFilter final : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        // Not widgets: their window hands the event on to them, and one shake would be two.
        if (!receiver->isWindowType() || event->type() != MotionEvent::eventType() || event == m_delivered)
            return false;
        deliverFirst(static_cast<QWindow *>(receiver), static_cast<MotionEvent *>(event));
        return true;
    }

private:
    // Sent anew from inside this filter, the event passes all other filters and handlers before it is
    // announced. A handler may delete the window, or send an event of its own.
    void deliverFirst(QPointer<QWindow> window, MotionEvent *event)
    {
        {
            const auto *outer = std::exchange(m_delivered, event);
            const auto restored = qScopeGuard([this, outer] { m_delivered = outer; });
            QCoreApplication::sendEvent(window, event);
        }
        if (window && event->subtype() == MotionEvent::Subtype::Shake && !event->isAccepted())
            NotificationCenter::defaultCenter().post(zenvorWindowDidShake(), window);
    }

    const QEvent *m_delivered = nullptr;
};

} // namespace

void WindowShakeHook::installIfNeeded(const Logger &logger)
{
    // Goes with the application object that it belongs to, and is installed again for another one.
    static auto *installed = new QPointer<ShakeFilter>; // never destroyed: it outlives all hosts' windows
    if (*installed)
        return;

    auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!application) {
        logger.error("Failed to install native shake hook."_L1);
        return;
    }
    if (application->thread() != QThread::currentThread()) { // where no filter would ever be asked
        logger.error("Failed to verify native shake hook installation."_L1);
        return;
    }
    *installed = new ShakeFilter(application);
    application->installEventFilter(*installed);
}

} // namespace zenvor
