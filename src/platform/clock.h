#pragma once

#include "platform/stop_token.h"
#include "platform/task.h"

#include <QDateTime>

#include <chrono>

namespace zenvor {

/// Time as the library sees it. A test hands in a clock that runs faster.
class Clock
{
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// The calendar time, in UTC.
    virtual QDateTime currentDateTime() const;
    /// For spans of time: never set back, stands still while the device sleeps.
    virtual std::chrono::steady_clock::time_point now() const;
    /// How long to wait in reality for \a duration of this clock.
    virtual std::chrono::milliseconds realDuration(std::chrono::milliseconds duration) const;

    /// Ends after \a duration, or as soon as \a stop is requested. Needs the event loop of the
    /// application object's thread, whatever executor awaits it.
    Task<> sleep(std::chrono::milliseconds duration, StopToken stop = {}) const;

    static const Clock &system();
};

} // namespace zenvor
