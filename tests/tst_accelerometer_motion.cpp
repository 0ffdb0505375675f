#include "platform/accelerometer_motion.h"
#include "support/movements.h"

#include <QAccelerometer>
#include <QGuiApplication>
#include <QPointer>
#include <QSensorBackend>
#include <QSensorManager>
#include <QTest>
#include <QWindow>

using namespace zenvor;
using namespace zenvor::test;
using namespace Qt::StringLiterals;

namespace {

/// An accelerometer of Qt Sensors that gives the readings that a test feeds it with.
class TestAccelerometer : public QSensorBackend
{
public:
    explicit TestAccelerometer(QSensor *sensor) : QSensorBackend(sensor), m_reading(setReading(&m_own))
    {
        addDataRate(20, 20);
        addDataRate(100, 400);
        addDataRate(25, 60);
        addDataRate(10, 10);
        current = this;
    }
    ~TestAccelerometer() override { current = nullptr; }

    void start() override { m_isRunning = true; }
    void stop() override { m_isRunning = false; }

    static bool isRunning() { return current && current->m_isRunning; }

    // Also after stop(), as a sensor with a queue does.
    static void feed(const QList<Reading> &readings)
    {
        for (const Reading &reading : readings) {
            const QPointer<TestAccelerometer> sensor = current;
            if (!sensor)
                return;
            sensor->m_reading->setTimestamp(reading.time);
            sensor->m_reading->setX(reading.x);
            sensor->m_reading->setY(reading.y);
            sensor->m_reading->setZ(reading.z);
            sensor->newReadingAvailable();
            if (!sensor)
                qFatal("A sensor goes on after it has delivered a reading.");
        }
    }

    static inline TestAccelerometer *current = nullptr;

private:
    QAccelerometerReading m_own{nullptr};
    QAccelerometerReading *m_reading;
    bool m_isRunning = false;
};

struct Factory : QSensorBackendFactory
{
    QSensorBackend *createBackend(QSensor *sensor) override { return new TestAccelerometer(sensor); }
};

Factory factory;
const QList<QByteArray> sensorNames{"dummy.accelerometer"_ba, "test.accelerometer"_ba};

void plugIn(const QByteArray &name)
{
    QSensorManager::registerBackend(QAccelerometer::sensorType, name, &factory);
}

/// A new application is inactive until enter().
struct Application
{
    bool enter()
    {
        window.show();
        if (isStill)
            Q_EMIT application.applicationStateChanged(Qt::ApplicationActive);
        return QTest::qWaitFor([this] {
            window.requestActivate(); // a window manager ignores it until it has seen the window
            return QGuiApplication::applicationState() == Qt::ApplicationActive;
        });
    }

    bool leave()
    {
        window.hide();
        isStill = QGuiApplication::platformName() == "offscreen"_L1;
        if (isStill) { // it never says so by itself
            Q_EMIT application.applicationStateChanged(Qt::ApplicationInactive);
            return true;
        }
        return QTest::qWaitFor([] { return QGuiApplication::applicationState() != Qt::ApplicationActive; },
                               20000);
    }

    int argc = 1;
    char name[5] = "test";
    char *argv[2] = {name, nullptr};
    QGuiApplication application{argc, argv};
    QWindow window;
    bool isStill = false;
};

} // namespace

class TestAccelerometerMotion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void sensorRunsOnlyWhileWantedAndActive();
    void sensorReportsEachShakeOnce();
    void skipsTheStandInForAMissingSensor_data();
    void skipsTheStandInForAMissingSensor();
    void survivesItsEnd_data();
    void survivesItsEnd();
    void doesNothingWithoutAGraphicalApplication();
};

void TestAccelerometerMotion::initTestCase()
{
    qputenv("QT_SENSORS_LOAD_PLUGINS", "0"); // this machine's sensors are not to be seen
}

void TestAccelerometerMotion::cleanup()
{
    for (const QByteArray &name : sensorNames) {
        if (QSensorManager::isBackendRegistered(QAccelerometer::sensorType, name))
            QSensorManager::unregisterBackend(QAccelerometer::sensorType, name);
    }
}

void TestAccelerometerMotion::sensorRunsOnlyWhileWantedAndActive()
{
    plugIn("test.accelerometer"_ba);
    int shakes = 0;
    AccelerometerMotion motion([&shakes] { ++shakes; });
    Application application;
    motion.start();
    motion.stop();
    motion.start();
    QCoreApplication::processEvents();
    QVERIFY(!TestAccelerometer::current); // not even looked for: the application is not active yet

    QVERIFY(application.enter());
    QTRY_VERIFY(TestAccelerometer::isRunning());
    QCOMPARE(TestAccelerometer::current->sensor()->dataRate(), 50);
    QVERIFY(application.leave());
    QVERIFY(!TestAccelerometer::isRunning());
    TestAccelerometer::feed(clearShake());
    QVERIFY(application.enter());
    QVERIFY(TestAccelerometer::isRunning());

    motion.stop();
    QVERIFY(!TestAccelerometer::isRunning());
    TestAccelerometer::feed(clearShake());
    QVERIFY(application.leave());
    QVERIFY(application.enter());
    QCoreApplication::processEvents();
    QVERIFY(!TestAccelerometer::isRunning());
    QCOMPARE(shakes, 0);

    motion.start();
    QVERIFY(!TestAccelerometer::isRunning()); // later, from the event loop
    QTRY_VERIFY(TestAccelerometer::isRunning());
}

void TestAccelerometerMotion::sensorReportsEachShakeOnce()
{
    plugIn("test.accelerometer"_ba);
    int shakes = 0;
    AccelerometerMotion motion([&shakes] { ++shakes; });
    Application application;
    QVERIFY(application.enter());
    motion.start();
    motion.stop();
    QCoreApplication::processEvents();
    motion.start();
    QVERIFY(!TestAccelerometer::current);
    QTRY_VERIFY(TestAccelerometer::isRunning());
    QList<Reading> readings = clearShake();
    TestAccelerometer::feed(readings); // in no time: only the readings' own times say that it took 2 s
    QCOMPARE(shakes, 1);

    // Half a shake before the sensor was off and half a shake after make none.
    TestAccelerometer::feed(clearShake(0, shakeStart + 0.4));
    motion.stop();
    motion.start();
    QTRY_VERIFY(TestAccelerometer::isRunning());
    TestAccelerometer::feed(clearShake(shakeStart + 0.4, shakeStart + 0.7));
    QCOMPARE(shakes, 1);
}

void TestAccelerometerMotion::skipsTheStandInForAMissingSensor_data()
{
    QTest::addColumn<QList<QByteArray>>("names");
    QTest::addColumn<QByteArray>("chosen");
    QTest::newRow("nothing at all") << QList<QByteArray>() << QByteArray();
    QTest::newRow("stand-in only") << sensorNames.first(1) << QByteArray();
    QTest::newRow("stand-in as the default") << sensorNames << sensorNames.constLast();
}

void TestAccelerometerMotion::skipsTheStandInForAMissingSensor()
{
    QFETCH(const QList<QByteArray>, names);
    QFETCH(const QByteArray, chosen);
    for (const QByteArray &name : names)
        plugIn(name);
    if (!names.isEmpty())
        QSensorManager::setDefaultBackend(QAccelerometer::sensorType, names.constFirst());
    AccelerometerMotion motion([] {});
    Application application;
    QVERIFY(application.enter());
    motion.start();
    QCoreApplication::processEvents();
    const auto *sensor = TestAccelerometer::current;
    QCOMPARE(sensor ? sensor->sensor()->identifier() : QByteArray(), chosen);

    if (chosen.isEmpty()) { // it does not look again by itself, but at the next start
        plugIn(sensorNames.constLast());
        QVERIFY(application.leave());
        QVERIFY(application.enter());
        QCoreApplication::processEvents();
        QVERIFY(!TestAccelerometer::current);
    }
    motion.start();
    QTRY_VERIFY(TestAccelerometer::isRunning());
}

void TestAccelerometerMotion::survivesItsEnd_data()
{
    QTest::addColumn<QByteArrayView>("end");
    for (const char *end : {"before the search", "while it runs", "in the handler", "after the application"})
        QTest::newRow(end) << QByteArrayView(end);
}

void TestAccelerometerMotion::survivesItsEnd()
{
    QFETCH(const QByteArrayView, end);
    plugIn("test.accelerometer"_ba);
    auto application = std::make_unique<Application>();
    QVERIFY(application->enter());
    int shakes = 0;
    std::unique_ptr<AccelerometerMotion> motion;
    motion = std::make_unique<AccelerometerMotion>([&motion, &shakes, end] {
        if (end == "in the handler")
            motion.reset();
        ++shakes;
    });
    motion->start();
    if (end == "before the search")
        motion.reset();
    QCoreApplication::processEvents();
    QCOMPARE(TestAccelerometer::isRunning(), end != "before the search");
    if (end == "while it runs")
        motion.reset();
    if (end == "after the application")
        application.reset();
    TestAccelerometer::feed(clearShake());
    QCOMPARE(shakes, end == "in the handler" ? 1 : 0);
    QVERIFY(!TestAccelerometer::isRunning());
    motion.reset();
    if (application)
        QTRY_VERIFY(!TestAccelerometer::current);
}

void TestAccelerometerMotion::doesNothingWithoutAGraphicalApplication()
{
    plugIn("test.accelerometer"_ba);
    AccelerometerMotion motion([] {});
    motion.start();
    motion.stop();
    motion.start();
    int argc = 1;
    char name[] = "test";
    char *argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    QCoreApplication::processEvents();
    QVERIFY(!TestAccelerometer::current);
}

QTEST_APPLESS_MAIN(TestAccelerometerMotion)
#include "tst_accelerometer_motion.moc"
