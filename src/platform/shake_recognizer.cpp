#include "platform/shake_recognizer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zenvor {

namespace {

// m/s2 and seconds, unless the name says otherwise.
constexpr float standardGravity = 9.81F;
constexpr double meanTime = 0.5;
constexpr double longestStep = 0.25; // beyond it nobody knows what happened in between
constexpr double largestReading = 1000; // no accelerometer measures that much
constexpr float swingThreshold = 9; // where a swing begins
constexpr double shakeThreshold = 14; // what its peak must reach
constexpr double shortestInterval = 0.07; // from swing to swing; what rings faster is a blow
constexpr double longestInterval = 0.28; // the arms of a runner take longer
constexpr double smallestSampledPart = 0.75; // less would let a fall through
constexpr quint64 muteMicroseconds = 500'000;

bool isPlausible(double value)
{
    return std::abs(value) <= largestReading; // also false for what is no number
}

double secondsBetween(quint64 earlier, quint64 later)
{
    return static_cast<double>(later - earlier) / 1e6;
}

} // namespace

bool ShakeRecognizer::add(quint64 microseconds, double x, double y, double z)
{
    if (!isPlausible(x) || !isPlausible(y) || !isPlausible(z))
        return false;
    const QVector3D reading(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    const bool goesBack = m_hasReading && microseconds < m_time;
    if (!m_hasReading || goesBack || secondsBetween(m_time, microseconds) > longestStep) {
        if (goesBack)
            m_mutedUntil = 0; // a time of the old reckoning
        restart(microseconds, reading);
        return false;
    }
    if (microseconds == m_time)
        return false;

    const double step = secondsBetween(m_time, microseconds);
    m_time = microseconds;
    updateGravity(reading, step);

    // The mean of the readings tells which way gravity points; how strong it is, is known. The steps of a
    // runner make the mean longer. With that taken for gravity, the moments of free fall between them, which
    // can take away no more than gravity, would look like swings.
    QVector3D gravity = m_mean;
    if (gravity.length() > standardGravity)
        gravity *= standardGravity / gravity.length();

    if (microseconds < m_mutedUntil || !updateSwings(reading - gravity, step) || !isShake(step))
        return false;
    m_count = 0;
    m_mutedUntil = microseconds + muteMicroseconds;
    return true;
}

void ShakeRecognizer::restart(quint64 microseconds, const QVector3D &reading)
{
    m_hasReading = true;
    m_time = microseconds;
    m_age = 0;
    m_mean = reading;
    m_count = 0;
}

// A plain mean at first, since the first reading may be the peak of a movement; then a low-pass filter.
void ShakeRecognizer::updateGravity(const QVector3D &reading, double step)
{
    m_age += step;
    m_mean += (reading - m_mean) * static_cast<float>(step / (std::min(m_age, meanTime) + step));
}

// Whether a swing has begun or grown that may complete a shake.
bool ShakeRecognizer::updateSwings(const QVector3D &acceleration, double step)
{
    const float strength = acceleration.length();
    if (strength < swingThreshold)
        return false;

    const double interval = m_count > 0 ? secondsBetween(m_swings[size_t(m_count) - 1].start, m_time) : 0;
    const float along = m_count > 0 ? QVector3D::dotProduct(acceleration, lineAfter(m_count)) : 0;
    const bool turnsBack = along <= -swingThreshold;
    // The start of a swing is known to one step only.
    const bool isTooSoon = turnsBack && interval < shortestInterval - step;
    if (m_count == 0 || interval > longestInterval || isTooSoon) {
        m_swings[0] = {acceleration, strength, m_time};
        m_count = 1;
    } else if (turnsBack) {
        if (m_count == int(m_swings.size())) {
            std::rotate(m_swings.begin(), m_swings.begin() + 1, m_swings.end());
            --m_count;
        }
        m_swings[size_t(m_count)] = {acceleration, -along, m_time};
        ++m_count;
    } else if (along > 0) {
        Swing &swing = m_swings[size_t(m_count) - 1];
        const float grown =
            m_count > 1 ? -QVector3D::dotProduct(acceleration, lineAfter(m_count - 1)) : strength;
        if (grown > swing.strength) {
            swing.peak = acceleration;
            swing.strength = grown;
        }
    }
    return m_count == int(m_swings.size());
}

// Out of two swings, so that a hand that does not keep to one line loses less.
QVector3D ShakeRecognizer::lineAfter(int count) const
{
    QVector3D line = m_swings[size_t(count) - 1].peak;
    if (count > 1)
        line -= m_swings[size_t(count) - 2].peak;
    return line.normalized();
}

bool ShakeRecognizer::isShake(double step) const
{
    // The peak of a swing lies up to half a step beside the reading nearest to it, which matters where a
    // swing has few of them. Four swings begin within one and a half periods.
    const double span = secondsBetween(m_swings.front().start, m_swings.back().start);
    const double sampledPart = std::cos(std::numbers::pi * std::min(1.5 * step / span, 0.5));
    const double threshold = shakeThreshold * std::max(sampledPart, smallestSampledPart);
    return std::all_of(m_swings.begin(), m_swings.end(),
                       [threshold](const Swing &swing) { return swing.strength >= threshold; });
}

} // namespace zenvor
