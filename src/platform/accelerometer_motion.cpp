#include "platform/accelerometer_motion.h"

#ifdef ZENVOR_WITH_SENSORS
#include <QAccelerometer>
#include <QGuiApplication>
#endif

#include <algorithm>
#include <utility>

namespace zenvor {

AccelerometerMotion::AccelerometerMotion(std::function<void()> onShake) : m_onShake(std::move(onShake))
{
}

#ifdef ZENVOR_WITH_SENSORS

namespace {

constexpr int wantedDataRate = 50; // readings a second

// Qt's stand-in for a missing sensor only wakes the processor up.
bool isReal(const QByteArray &identifier)
{
    return !identifier.isEmpty() && !identifier.startsWith("dummy.");
}

QByteArray sensorIdentifier()
{
    const QByteArray type = QAccelerometer::sensorType;
    const QByteArray identifier = QSensor::defaultSensorForType(type);
    if (isReal(identifier))
        return identifier;
    const QList<QByteArray> identifiers = QSensor::sensorsForType(type);
    const auto found = std::find_if(identifiers.begin(), identifiers.end(), isReal);
    return found != identifiers.end() ? *found : QByteArray();
}

// The slowest that is fast enough, else the fastest; 0, the sensor's own choice, if it offers none.
int dataRate(const qrangelist &offered)
{
    int best = 0;
    for (const auto &[slowest, fastest] : offered) {
        const int rate = std::max(slowest, std::min(wantedDataRate, fastest));
        const bool isBetter = best < wantedDataRate ? rate > best : rate >= wantedDataRate && rate < best;
        if (isBetter)
            best = rate;
    }
    return best;
}

} // namespace

AccelerometerMotion::~AccelerometerMotion()
{
    stop();
    if (m_sensor)
        m_sensor->deleteLater(); // it may be the one that is calling the handler
}

void AccelerometerMotion::start()
{
    m_isStarted = true;
    QMetaObject::invokeMethod(this, &AccelerometerMotion::followApplication, Qt::QueuedConnection);
}

void AccelerometerMotion::stop()
{
    m_isStarted = false;
    disconnect(m_stateConnection);
    if (m_sensor)
        m_sensor->stop();
}

void AccelerometerMotion::followApplication()
{
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!m_isStarted || m_stateConnection || !application)
        return;
    m_stateConnection = connect(application, &QGuiApplication::applicationStateChanged, this,
                                &AccelerometerMotion::setApplicationState);
    setApplicationState(QGuiApplication::applicationState());
}

void AccelerometerMotion::setApplicationState(Qt::ApplicationState state)
{
    if (state != Qt::ApplicationActive) {
        if (m_sensor)
            m_sensor->stop();
    } else if (m_sensor || findSensor()) {
        m_recognizer = {};
        m_sensor->start();
    } else {
        disconnect(m_stateConnection);
    }
}

bool AccelerometerMotion::findSensor()
{
    const QByteArray identifier = sensorIdentifier();
    if (identifier.isEmpty())
        return false;
    m_sensor = new QAccelerometer(QCoreApplication::instance());
    m_sensor->setIdentifier(identifier);
    if (!m_sensor->connectToBackend()) {
        delete m_sensor;
        return false;
    }
    m_sensor->setDataRate(dataRate(m_sensor->availableDataRates()));
    connect(m_sensor, &QSensor::readingChanged, this, &AccelerometerMotion::takeReading);
    return true;
}

void AccelerometerMotion::takeReading()
{
    if (!m_sensor->isActive())
        return; // a late one
    const QAccelerometerReading *reading = m_sensor->reading();
    if (!m_recognizer.add(reading->timestamp(), reading->x(), reading->y(), reading->z()))
        return;
    const auto onShake = m_onShake; // lives on if this object does not
    onShake();
}

#else

AccelerometerMotion::~AccelerometerMotion() = default;

void AccelerometerMotion::start()
{
}

void AccelerometerMotion::stop()
{
}

#endif

} // namespace zenvor
