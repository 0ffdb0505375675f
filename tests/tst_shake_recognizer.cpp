#include "platform/accelerometer_motion.h"
#include "platform/shake_recognizer.h"

#include <QAccelerometer>
#include <QGuiApplication>
#include <QPointer>
#include <QQuaternion>
#include <QSensorBackend>
#include <QSensorManager>
#include <QTest>
#include <QVector3D>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <random>

using namespace zenvor;
using namespace Qt::StringLiterals;

namespace {

constexpr double pi = std::numbers::pi;
constexpr double g = 9.81; // m/s2
constexpr double shakeStart = 1; // seconds

/// How a device moves, over the time in seconds: its acceleration in the world's frame (z is up) without
/// gravity, and how it is held.
struct Movement
{
    std::function<QVector3D(double)> acceleration = [](double) {
        return QVector3D();
    };
    std::function<QQuaternion(double)> orientation = [](double) {
        return QQuaternion();
    };
    float noise = 0.3F;
};

using Random = std::mt19937;
using Maker = std::function<Movement(Random &)>;

QVector3D vector(double x, double y, double z)
{
    return {float(x), float(y), float(z)};
}

double between(Random &random, double low, double high)
{
    return low + (high - low) * double(random()) / 4294967295.0;
}

QVector3D anyDirection(Random &random)
{
    const double z = between(random, -1, 1);
    const double angle = between(random, 0, 2 * pi);
    const double radius = std::sqrt(1 - z * z);
    return vector(radius * std::cos(angle), radius * std::sin(angle), z);
}

QQuaternion turned(const QVector3D &axis, double radians)
{
    return QQuaternion::fromAxisAndAngle(axis, float(radians * 180 / pi));
}

std::function<QQuaternion(double)> heldAnyhow(Random &random)
{
    const QQuaternion pose = turned(anyDirection(random), between(random, 0, 2 * pi));
    return [pose](double) {
        return pose;
    };
}

// A single push, half a sine.
double push(double t, double start, double length)
{
    return t < start || t > start + length ? 0 : std::sin(pi * (t - start) / length);
}

// What a blow leaves behind.
double ringing(double t, double start, double frequency, double decay)
{
    return t < start ? 0 : std::exp((start - t) / decay) * std::sin(2 * pi * frequency * (t - start));
}

Maker shake(double frequency, double strength, const QVector3D &direction, double from = shakeStart)
{
    return [=](Random &random) {
        const auto acceleration = [=](double t) {
            const double wave = t < from ? 0 : std::sin(2 * pi * frequency * (t - from));
            return direction * float(strength * g * wave);
        };
        return Movement{acceleration, heldAnyhow(random)};
    };
}

// To and fro are not quite opposite.
Movement bentShake(Random &random)
{
    const auto acceleration = [](double t) {
        const double wave = t < shakeStart ? 0 : std::sin(8 * pi * (t - shakeStart));
        return (wave > 0 ? vector(1, 0, 0) : vector(0.7, 0.7, 0)) * float(2 * g * wave);
    };
    return {acceleration, heldAnyhow(random)};
}

// Turned over on the way.
Movement shakeAfterATurn(Random &random)
{
    Movement movement = shake(3, 2, {0, 0, 1})(random);
    movement.orientation = [](double t) {
        return turned({1, 0, 0}, pi * std::clamp(t * 4, 0., 1.));
    };
    return movement;
}

// Each swing has its own speed, strength and, within limits, direction; the wrist turns along.
Movement humanShake(Random &random)
{
    struct Swing
    {
        double start, length;
        QVector3D peak;
    };
    const QVector3D line = anyDirection(random);
    QList<Swing> swings;
    double start = shakeStart;
    for (int i = 0; i < 12; ++i) {
        const double length = 0.5 / between(random, 2.5, 5);
        const double strength = between(random, 1.8, 3) * (i % 2 ? -g : g);
        swings << Swing{start, length, (line + 0.15F * anyDirection(random)).normalized() * float(strength)};
        start += length;
    }
    const auto acceleration = [swings](double t) {
        QVector3D sum;
        for (const Swing &swing : swings)
            sum += swing.peak * float(push(t, swing.start, swing.length));
        return sum;
    };
    const auto held = heldAnyhow(random)(0);
    const QVector3D axis = anyDirection(random);
    const auto orientation = [=](double t) {
        return turned(axis, 0.15 * std::sin(18 * t)) * held;
    };
    return {acceleration, orientation, 0.8F};
}

struct Carried
{
    double swing; // of the arm or leg, in radians to each side
    double radius; // metres from its joint
    double slap; // m/s2, of a device that is loose in a pocket
};

constexpr Carried tight{0, 0, 0};
constexpr Carried inHand{0.5, 0.4, 0};
constexpr Carried inPocket{0.4, 0.3, 5};

// Adds to the steps of a body what the limb that carries the device makes of them.
Movement carry(Random &random, const Carried &carried, double steps, std::function<QVector3D(double)> body)
{
    const double rate = pi * steps; // a swing to and fro takes two steps
    const double phase = between(random, -0.6, 0.6);
    const QVector3D slap = anyDirection(random) * float(carried.slap);
    const auto angle = [=](double t) {
        return carried.swing * std::sin(rate * t + phase);
    };
    const auto acceleration = [=](double t) {
        const double speed = carried.swing * rate * std::cos(rate * t + phase);
        const double inward = speed * speed * carried.radius;
        const double across = -angle(t) * rate * rate * carried.radius;
        const double sine = std::sin(angle(t));
        const double cosine = std::cos(angle(t));
        const QVector3D limb = vector(across * cosine - inward * sine, 0, across * sine + inward * cosine);
        return body(t) + limb + slap * float(ringing(std::fmod(t, 1 / steps), 0, 9, 0.06));
    };
    const auto held = heldAnyhow(random)(0);
    return {acceleration, [=](double t) { return turned({0, 1, 0}, -angle(t)) * held; }, 0.5F};
}

Maker walking(const Carried &carried)
{
    return [=](Random &random) {
        const double steps = between(random, 1.7, 2.3);
        return carry(random, carried, steps, [steps](double t) {
            const double heel = 5 * push(std::fmod(t, 1 / steps), 0, 0.04);
            return vector(2 * std::cos(2 * pi * steps * t), std::sin(pi * steps * t),
                          3.5 * std::sin(2 * pi * steps * t) + heel);
        });
    };
}

// The foot carries the body for as long as makes up for the free fall between two steps.
Maker running(double impact, double steps, const Carried &carried)
{
    return [=](Random &random) {
        const double stride = 1 / steps;
        const double contact = stride * pi / 2 / impact;
        const double shift = between(random, 0, stride);
        return carry(random, carried, steps, [=](double t) {
            const double step = std::fmod(t + shift, stride);
            const double foot = push(step, 0, contact);
            const double braking = step < contact ? -0.4 * g * std::sin(2 * pi * step / contact) : 0;
            const double heel = 0.5 * g * push(step, 0, 0.03);
            return vector(braking, 0.2 * g * foot * std::sin(pi * steps * t), impact * g * foot + heel - g);
        });
    };
}

Movement drop(Random &random)
{
    struct Fall
    {
        double start, end;
        float blow;
        QVector3D jolt;
    };
    QList<Fall> falls;
    double start = 1;
    double length = between(random, 0.3, 0.5);
    for (float blow = 120; blow > 10; blow *= 0.5F, length *= 0.7) {
        falls << Fall{start, start + length, blow, anyDirection(random) * blow * 0.5F};
        start += length + 0.012;
    }
    const auto acceleration = [falls](double t) {
        QVector3D sum;
        for (const Fall &fall : falls) {
            if (t >= fall.start && t < fall.end)
                sum += vector(0, 0, -g);
            sum += vector(0, 0, fall.blow * push(t, fall.end, 0.012));
            sum += fall.jolt * float(ringing(t, fall.end, 40, 0.02));
        }
        return sum;
    };
    const QVector3D axis = anyDirection(random);
    const auto orientation = [=](double t) {
        return turned(axis, 7 * (std::clamp(t, 1., start) - 1));
    };
    return {acceleration, orientation};
}

// One after the other, as a device in a bag gets them.
Maker blows(int count, double strength, double interval)
{
    return [=](Random &random) {
        const QVector3D direction = anyDirection(random) * float(strength);
        const double frequency = between(random, 20, 40);
        const auto acceleration = [=](double t) {
            double sum = 0;
            for (int i = 0; i < count; ++i)
                sum += ringing(t, 1 + i * interval, frequency, 0.025);
            return direction * float(sum);
        };
        return Movement{acceleration, heldAnyhow(random)};
    };
}

// Half a turn and back, a hand's breadth beside the axis.
Maker turns(double seconds)
{
    return [=](Random &random) {
        const QVector3D axis = anyDirection(random);
        const QVector3D arm = QVector3D::crossProduct(axis, anyDirection(random)).normalized() * 0.1F;
        const auto angle = [=](double t) {
            const double there = std::clamp((t - 1) / seconds, 0., 1.);
            const double back = std::clamp((t - 1.2 - seconds) / seconds, 0., 1.);
            return pi / 2 * (std::cos(pi * back) - std::cos(pi * there));
        };
        const auto acceleration = [=](double t) {
            const auto place = [&](double at) {
                return turned(axis, angle(at)).rotatedVector(arm);
            };
            return (place(t + 0.01) - 2 * place(t) + place(t - 0.01)) / 0.0001F;
        };
        return Movement{acceleration, [=](double t) {
                            return turned(axis, angle(t));
                        }};
    };
}

Maker ride(double body, double wheels, double hole, double brakes)
{
    return [=](Random &random) {
        const double first = between(random, 0, 2 * pi);
        const auto acceleration = [=](double t) {
            const double last = std::fmod(t, 0.9);
            const double bounce = body * std::sin(9 * t + first) + wheels * std::sin(75 * t)
                + hole * (ringing(last, 0, 12, 0.08) + 0.5 * ringing(last, 0, 2, 0.3));
            return vector(t > 2 && t < 4 ? -brakes : 0, body / 2 * std::sin(6 * t), bounce);
        };
        return Movement{acceleration, heldAnyhow(random), 0.5F};
    };
}

Movement putDown(Random &random)
{
    const auto acceleration = [](double t) {
        const double hand = 6 * (push(t, 1.35, 0.3) - push(t, 1, 0.3));
        return vector(0, 0, hand + 30 * ringing(t, 1.7, 30, 0.02) + 20 * ringing(t, 1.82, 30, 0.02));
    };
    const double tilt = between(random, 0.5, 1.5);
    return {acceleration, [=](double t) {
                return turned({1, 0, 0}, tilt * std::clamp((1.7 - t) / 0.7, 0., 1.));
            }};
}

Movement typing(Random &random)
{
    const double interval = 1 / between(random, 4, 8);
    const auto acceleration = [=](double t) {
        return vector(0, 0, -5 * ringing(std::fmod(t, interval), 0, 25, 0.02));
    };
    return {acceleration, heldAnyhow(random)};
}

struct Reading
{
    quint64 time; // microseconds
    double x, y, z;
};

double secondsOf(const Reading &reading)
{
    return double(reading.time) / 1e6;
}

QList<Reading> record(const Movement &movement, double from, double to, double rate, Random &random)
{
    std::normal_distribution<float> noise(0, movement.noise);
    QList<Reading> readings;
    const double phase = between(random, 0, 1);
    for (int i = 0; from + (i + phase) / rate < to; ++i) {
        const double t = from + (i + phase) / rate;
        const QVector3D real = movement.acceleration(t) + vector(0, 0, g);
        const QVector3D seen = movement.orientation(t).conjugated().rotatedVector(real)
            + QVector3D(noise(random), noise(random), noise(random));
        readings << Reading{quint64(t * 1e6), seen.x(), seen.y(), seen.z()};
    }
    return readings;
}

QList<double> shakesIn(const QList<Reading> &readings, ShakeRecognizer recognizer = {})
{
    QList<double> times;
    for (const Reading &reading : readings) {
        if (recognizer.add(reading.time, reading.x, reading.y, reading.z))
            times << secondsOf(reading);
    }
    return times;
}

QList<Reading> clearShake(double from = 0, double to = shakeStart + 0.8)
{
    Random random(1);
    return record(shake(3, 2, {1, 0, 0})(random), from, to, 50, random);
}

void append(QList<Reading> &readings, QList<Reading> others, qint64 shift)
{
    for (Reading &reading : others)
        reading.time += quint64(shift);
    readings += others;
}

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
        window.requestActivate();
        if (isStill)
            Q_EMIT application.applicationStateChanged(Qt::ApplicationActive);
        return QTest::qWaitFor([] { return QGuiApplication::applicationState() == Qt::ApplicationActive; });
    }

    bool leave()
    {
        window.hide();
        isStill = QGuiApplication::platformName() == "offscreen"_L1;
        if (isStill) { // it never says so by itself
            Q_EMIT application.applicationStateChanged(Qt::ApplicationInactive);
            return true;
        }
        return QTest::qWaitFor([] { return QGuiApplication::applicationState() != Qt::ApplicationActive; });
    }

    int argc = 1;
    char name[5] = "test";
    char *argv[2] = {name, nullptr};
    QGuiApplication application{argc, argv};
    QWindow window;
    bool isStill = false;
};

} // namespace

class tst_ShakeRecognizer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void recognisesAShakeInTime_data();
    void recognisesAShakeInTime();
    void staysSilentWhenTheDeviceOnlyMoves_data();
    void staysSilentWhenTheDeviceOnlyMoves();
    void needsFourSwings();
    void isMuteForHalfASecond();
    void copesWithBadReadings_data();
    void copesWithBadReadings();
    void recognisesAShakeThatWasUnderWayBefore_data();
    void recognisesAShakeThatWasUnderWayBefore();
    void sensorRunsOnlyWhileWantedAndActive();
    void sensorReportsEachShakeOnce();
    void skipsTheStandInForAMissingSensor_data();
    void skipsTheStandInForAMissingSensor();
    void survivesItsEnd_data();
    void survivesItsEnd();
    void doesNothingWithoutAGraphicalApplication();
};

void tst_ShakeRecognizer::initTestCase()
{
    qputenv("QT_SENSORS_LOAD_PLUGINS", "0"); // this machine's sensors are not to be seen
}

void tst_ShakeRecognizer::cleanup()
{
    for (const QByteArray &name : sensorNames) {
        if (QSensorManager::isBackendRegistered(QAccelerometer::sensorType, name))
            QSensorManager::unregisterBackend(QAccelerometer::sensorType, name);
    }
}

void tst_ShakeRecognizer::recognisesAShakeInTime_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QList<double>>("rates");

    const QList<double> usual{50, 20};
    QTest::newRow("along x") << shake(3, 2, {1, 0, 0}) << usual;
    QTest::newRow("along y") << shake(3, 2, {0, 1, 0}) << usual;
    QTest::newRow("up and down") << shake(3, 2, {0, 0, 1}) << usual;
    QTest::newRow("down and up") << shake(3, 2, {0, 0, -1}) << usual;
    QTest::newRow("askew") << shake(3, 2, {-0.6F, 0, 0.8F}) << usual;
    QTest::newRow("slow and weak") << shake(2.5, 1.8, {0.6F, 0.8F, 0}) << usual;
    QTest::newRow("slow and strong") << shake(2.5, 3, {0, 0.6F, 0.8F}) << usual;
    QTest::newRow("quick and weak") << shake(5, 1.8, {0.6F, 0, 0.8F}) << usual;
    QTest::newRow("quick and strong") << shake(5, 3, {0, 1, 0}) << usual;
    QTest::newRow("as a human does it") << Maker(humanShake) << usual;
    QTest::newRow("along a bent line") << Maker(bentShake) << usual;
    QTest::newRow("after a turn") << Maker(shakeAfterATurn) << usual;
    QTest::newRow("other rates") << shake(3, 2, {0.8F, 0, 0.6F}) << QList<double>{15, 33, 100, 417};
}

void tst_ShakeRecognizer::recognisesAShakeInTime()
{
    QFETCH(const Maker, maker);
    QFETCH(const QList<double>, rates);
    for (const double rate : rates) {
        for (quint32 seed = 1; seed <= 20; ++seed) {
            Random random(seed);
            const QList<double> times = shakesIn(record(maker(random), 0, shakeStart + 0.8, rate, random));
            const QByteArray where =
                "at "_ba + QByteArray::number(rate) + " Hz, seed " + QByteArray::number(seed);
            QVERIFY2(times.size() == 1 && times.constFirst() > shakeStart, where.constData());
        }
    }
}

void tst_ShakeRecognizer::staysSilentWhenTheDeviceOnlyMoves_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QList<double>>("rates");

    const QList<double> all{10, 20, 50, 100};
    const QList<double> fast{50, 100}; // a sensor that is read more seldom filters such vibrations out
    QTest::newRow("rest") << Maker([](Random &random) { return Movement{.orientation = heldAnyhow(random)}; })
                          << all;
    QTest::newRow("gentle shake") << shake(3, 1.2, {1, 0, 0}) << all;
    QTest::newRow("slow swing of the arm") << shake(1.5, 2.5, {1, 0, 0}) << all;
    QTest::newRow("rattling") << shake(12, 2.5, {1, 0, 0}) << fast;
    QTest::newRow("walking") << walking(tight) << all;
    QTest::newRow("walking, in the hand") << walking(inHand) << all;
    QTest::newRow("walking, in the pocket") << walking(inPocket) << all;
    for (const double impact : {2., 3.}) {
        for (const double steps : {2.6, 3.}) {
            const auto row = [&](const char *how, const Carried &carried) {
                QTest::addRow("running %g g, %g steps, %s", impact, steps, how)
                    << running(impact, steps, carried) << all;
            };
            row("tight", tight);
            row("in the hand", inHand);
            row("in the pocket", inPocket);
        }
    }
    QTest::newRow("running, hard blows") << running(4, 2.8, tight) << all;
    QTest::newRow("drop") << Maker(drop) << all;
    QTest::newRow("bump against a table") << blows(1, 60, 0) << all;
    QTest::newRow("bumps in a row") << blows(6, 60, 0.2) << fast;
    QTest::newRow("turn") << turns(0.8) << all;
    QTest::newRow("fast turn") << turns(0.25) << all;
    QTest::newRow("car") << ride(2.5, 4, 14, 8) << all;
    QTest::newRow("train") << ride(0.6, 1.5, 5, 1.5) << all;
    QTest::newRow("put down") << Maker(putDown) << all;
    QTest::newRow("typing") << Maker(typing) << all;
}

void tst_ShakeRecognizer::staysSilentWhenTheDeviceOnlyMoves()
{
    QFETCH(const Maker, maker);
    QFETCH(const QList<double>, rates);
    for (const double rate : rates) {
        for (quint32 seed = 1; seed <= 20; ++seed) {
            Random random(seed);
            const QList<double> times = shakesIn(record(maker(random), 0, 6, rate, random));
            const QByteArray where =
                "at "_ba + QByteArray::number(rate) + " Hz, seed " + QByteArray::number(seed);
            QVERIFY2(times.isEmpty(), where.constData());
        }
    }
}

void tst_ShakeRecognizer::needsFourSwings()
{
    QList<Reading> threeSwings = clearShake(0, shakeStart + 0.5);
    append(threeSwings, clearShake(0, shakeStart), 1'500'000);
    QVERIFY(shakesIn(threeSwings).isEmpty());
}

void tst_ShakeRecognizer::isMuteForHalfASecond()
{
    Random random(1);
    const QList<double> times = shakesIn(record(shake(5, 2, {1, 0, 0})(random), 0, 5, 50, random));
    QVERIFY(times.size() > 3);
    for (qsizetype i = 1; i < times.size(); ++i)
        QVERIFY(times.at(i) - times.at(i - 1) > 0.5);
}

void tst_ShakeRecognizer::copesWithBadReadings_data()
{
    QTest::addColumn<QList<Reading>>("readings");
    QTest::addColumn<qsizetype>("shakes");

    const auto spoilt = [](double value) {
        QList<Reading> readings;
        const QList<Reading> good = clearShake();
        for (const Reading &reading : good)
            readings << reading << Reading{reading.time + 7000, value, value, -value};
        return readings;
    };
    const auto row = [](const char *tag, const QList<Reading> &readings, qsizetype shakes) {
        QTest::newRow(tag) << readings << shakes;
    };
    row("no numbers in between", spoilt(std::numeric_limits<double>::quiet_NaN()), 1);
    row("infinite ones in between", spoilt(std::numeric_limits<double>::infinity()), 1);
    row("huge ones in between", spoilt(1e200), 1);
    row("greatest ones in between", spoilt(std::numeric_limits<double>::max()), 1);

    QList<Reading> twice;
    QList<Reading> timeless = clearShake();
    for (Reading &reading : timeless) {
        twice << reading << Reading{reading.time, -30, 30, 30};
        reading.time = 5;
    }
    row("each time twice", twice, 1);
    row("one time for all", timeless, 0);
    row("nothing but null", QList<Reading>(100, Reading{0, 0, 0, 0}), 0);

    QList<Reading> setBack = clearShake();
    append(setBack, clearShake(), -500'000);
    row("set back after a shake", setBack, 2);
    QList<Reading> halfSetBack = clearShake(0, shakeStart + 0.4);
    append(halfSetBack, clearShake(shakeStart + 0.4, shakeStart + 0.7), -250'000);
    row("set back within a shake", halfSetBack, 0);
    QList<Reading> wrapped = clearShake();
    append(wrapped, clearShake(), std::numeric_limits<qint64>::max());
    row("leap over ages", wrapped, 2);
}

void tst_ShakeRecognizer::copesWithBadReadings()
{
    QFETCH(const QList<Reading>, readings);
    QTEST(shakesIn(readings).size(), "shakes");
}

void tst_ShakeRecognizer::recognisesAShakeThatWasUnderWayBefore_data()
{
    QTest::addColumn<double>("pause");
    QTest::newRow("first readings ever") << 0.;
    QTest::newRow("after a pause of the sensor") << 60.;
}

void tst_ShakeRecognizer::recognisesAShakeThatWasUnderWayBefore()
{
    QFETCH(const double, pause);
    for (int part = 0; part < 12; ++part) { // of a period
        const double from = shakeStart + part / 36.;
        QList<Reading> readings;
        if (pause > 0)
            readings = clearShake(0, shakeStart);
        append(readings, clearShake(from, from + 0.85), qint64(pause * 1e6));
        QVERIFY2(shakesIn(readings).size() == 1, QByteArray::number(part).constData());
    }
}

void tst_ShakeRecognizer::sensorRunsOnlyWhileWantedAndActive()
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

void tst_ShakeRecognizer::sensorReportsEachShakeOnce()
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

void tst_ShakeRecognizer::skipsTheStandInForAMissingSensor_data()
{
    QTest::addColumn<QList<QByteArray>>("names");
    QTest::addColumn<QByteArray>("chosen");
    QTest::newRow("nothing at all") << QList<QByteArray>() << QByteArray();
    QTest::newRow("stand-in only") << sensorNames.first(1) << QByteArray();
    QTest::newRow("stand-in as the default") << sensorNames << sensorNames.constLast();
}

void tst_ShakeRecognizer::skipsTheStandInForAMissingSensor()
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

    if (chosen.isEmpty()) { // it does not look again by itself, but the next time
        plugIn(sensorNames.constLast());
        motion.start();
        QVERIFY(application.leave());
        QVERIFY(application.enter());
        QCoreApplication::processEvents();
        QVERIFY(!TestAccelerometer::current);
    }
    motion.stop();
    motion.start();
    QTRY_VERIFY(TestAccelerometer::isRunning());
}

void tst_ShakeRecognizer::survivesItsEnd_data()
{
    QTest::addColumn<QByteArrayView>("end");
    for (const char *end : {"before the search", "while it runs", "in the handler", "after the application"})
        QTest::newRow(end) << QByteArrayView(end);
}

void tst_ShakeRecognizer::survivesItsEnd()
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

void tst_ShakeRecognizer::doesNothingWithoutAGraphicalApplication()
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

QTEST_APPLESS_MAIN(tst_ShakeRecognizer)
#include "tst_shake_recognizer.moc"
