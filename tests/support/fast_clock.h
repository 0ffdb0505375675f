#pragma once

#include "platform/clock.h"

#include <chrono>

namespace zenvor::test {

/// A clock that runs \a speed times as fast, on the calendar as well.
class FastClock final : public Clock
{
public:
    explicit FastClock(int speed) : m_speed(speed) {}

    QDateTime currentDateTime() const override
    {
        using namespace std::chrono;
        return m_startDate.addMSecs(duration_cast<milliseconds>(now() - m_start).count());
    }
    std::chrono::steady_clock::time_point now() const override
    {
        return std::chrono::steady_clock::time_point(Clock::now().time_since_epoch() * m_speed);
    }
    std::chrono::milliseconds realDuration(std::chrono::milliseconds duration) const override
    {
        return std::chrono::ceil<std::chrono::milliseconds>(duration / double(m_speed));
    }

private:
    const int m_speed;
    const std::chrono::steady_clock::time_point m_start = now();
    const QDateTime m_startDate = Clock::currentDateTime();
};

} // namespace zenvor::test
