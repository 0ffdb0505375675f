#pragma once

#include <QVector3D>

#include <array>

namespace zenvor {

/// Tells a shake of the device from its other movements by what the accelerometer reads: four swings to
/// and fro along one line, quick upon each other and each stronger than a body can do that carries the
/// device. Constant memory and time; any sampling rate from about 15 Hz on.
class ShakeRecognizer
{
public:
    /// Takes a reading in m/s2, gravity included, with the sensor's own time of it. True if a shake is
    /// recognised in this very moment; for half a second after that always false. Readings that are no
    /// numbers or repeat a time are ignored; a time that goes back or leaps ahead begins afresh.
    bool add(quint64 microseconds, double x, double y, double z);

private:
    struct Swing
    {
        QVector3D peak;
        float strength = 0; // along the line of the swings before it
        quint64 start = 0;
    };

    void restart(quint64 microseconds, const QVector3D &reading);
    void updateGravity(const QVector3D &reading, double step);
    bool updateSwings(const QVector3D &acceleration, double step);
    QVector3D lineAfter(int count) const;
    bool isShake(double step) const;

    quint64 m_time = 0;
    quint64 m_mutedUntil = 0;
    double m_age = 0; // seconds since the first reading
    bool m_hasReading = false;
    QVector3D m_mean;
    std::array<Swing, 4> m_swings;
    int m_count = 0;
};

} // namespace zenvor
