#pragma once

#include "platform/shake_recognizer.h"

#include <QObject>
#include <QPointer>

#include <functional>

class QAccelerometer;

namespace zenvor {

/// Watches the device's accelerometer for shakes, between start() and stop() and while the application is
/// active; at all other times the sensor is off. Does nothing on a device without one, without a graphical
/// application and in a build without Qt Sensors. Main thread.
class AccelerometerMotion : public QObject
{
    Q_OBJECT

public:
    /// \a onShake is called for each shake; it may stop or destroy this object.
    explicit AccelerometerMotion(std::function<void()> onShake);
    ~AccelerometerMotion() override;

    /// Returns at once: the search for the sensor, which loads plug-ins, waits for the event loop and until
    /// the application is active. If it finds nothing, the next start()
    /// repeats it.
    void start();
    /// The sensor is off, and no shake is reported any more, when this returns.
    void stop();

private:
    void followApplication();
    void setApplicationState(Qt::ApplicationState state);
    bool findSensor();
    void takeReading();

    std::function<void()> m_onShake;
    ShakeRecognizer m_recognizer;
    QPointer<QAccelerometer> m_sensor; // the application object's child, so that it never outlives that
    QMetaObject::Connection m_stateConnection;
    bool m_isStarted = false;
};

} // namespace zenvor
