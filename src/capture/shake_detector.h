#pragma once

#include "platform/clock.h"
#include "platform/logger.h"

#include <zenvor/notification_center.h>

#include <functional>
#include <memory>
#include <optional>

namespace zenvor {

class AccelerometerMotion;

/// Tells of shakes while it runs, whether the accelerometer recognised them or the host announced them.
/// Those that come too soon after the last one it told of are dropped silently. Main thread, except for
/// the constructor.
class ShakeDetector
{
public:
    /// \a clock must outlive the detector.
    explicit ShakeDetector(const Clock &clock = Clock::system());
    ~ShakeDetector();

    /// Calls \a onShake, on the main thread, for each shake from now on. Started again, only the callback
    /// is replaced. Asks no sensor itself: one is looked for once the event loop runs.
    void start(std::function<void()> onShake);

    /// Forgets the callback. When the last shake was is remembered.
    void stop();

private:
    void windowDidShake();

    const Logger m_logger;
    const Clock &m_clock;
    std::function<void()> m_onShake;
    NotificationToken m_observer;
    std::optional<std::chrono::steady_clock::time_point> m_lastTrigger;
    std::unique_ptr<AccelerometerMotion> m_accelerometer;
    bool m_isRunning = false;
};

} // namespace zenvor
