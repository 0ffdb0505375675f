#include "platform/clock.h"

#include "platform/awaitable_callback.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <optional>
#include <utility>
#include <variant>

namespace zenvor {
namespace {

// One sleep, on the application object's thread. Goes with the application object if that ends first.
class SleepTimer final : public QTimer
{
public:
    SleepTimer(std::chrono::milliseconds duration, const StopToken &stop, std::function<void()> done)
        : QTimer(QCoreApplication::instance())
        , m_done(std::move(done))
    {
        setSingleShot(true);
        setTimerType(Qt::PreciseTimer);
        connect(this, &QTimer::timeout, this, [this] { finish(); });
        start(duration);
        m_stopCallback.emplace(stop, [self = QPointer(this)] {
            MainActor::shared()->post([self] {
                if (self)
                    self->finish();
            });
        });
    }

private:
    void finish()
    {
        if (!m_done)
            return;
        const auto done = std::exchange(m_done, nullptr);
        QTimer::stop();
        deleteLater();
        done();
    }

    std::function<void()> m_done;
    std::optional<StopCallback> m_stopCallback;
};

} // namespace

QDateTime Clock::currentDateTime() const
{
    return QDateTime::currentDateTimeUtc();
}

std::chrono::steady_clock::time_point Clock::now() const
{
    return std::chrono::steady_clock::now();
}

std::chrono::milliseconds Clock::realDuration(std::chrono::milliseconds duration) const
{
    return duration;
}

Task<> Clock::sleep(std::chrono::milliseconds duration, StopToken stop) const
{
    const auto wait = realDuration(duration);
    AwaitableCallback<std::monostate> elapsed([wait, stop](std::function<void(std::monostate)> done) {
        MainActor::shared()->post([wait, stop, done] {
            if (QCoreApplication::instance())
                new SleepTimer(wait, stop, [done] { done({}); });
        });
    });
    co_await elapsed;
}

const Clock &Clock::system()
{
    static const auto *clock = new Clock; // never destroyed, as everything that other threads may hold
    return *clock;
}

} // namespace zenvor
