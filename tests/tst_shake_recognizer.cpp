#include "platform/shake_recognizer.h"
#include "support/movements.h"

#include <QTest>

#include <limits>

using namespace zenvor;
using namespace zenvor::test;
using namespace Qt::StringLiterals;

namespace {

QList<double> shakesIn(const QList<Reading> &readings, ShakeRecognizer recognizer = {})
{
    QList<double> times;
    for (const Reading &reading : readings) {
        if (recognizer.add(reading.time, reading.x, reading.y, reading.z))
            times << secondsOf(reading);
    }
    return times;
}

// The shakes in the row's movement, made by twenty people and read at each of the row's rates.
template<typename Check>
void forEachRecording(double seconds, Check check)
{
    QFETCH(const Maker, maker);
    QFETCH(const QList<double>, rates);
    for (const double rate : rates) {
        for (quint32 seed = 1; seed <= 20; ++seed) {
            Random random(seed);
            const auto times = shakesIn(record(maker(random), 0, seconds, rate, random));
            check(times, "at "_ba + QByteArray::number(rate) + " Hz, seed " + QByteArray::number(seed));
        }
    }
}

void append(QList<Reading> &readings, QList<Reading> others, qint64 shift)
{
    for (Reading &reading : others)
        reading.time += quint64(shift);
    readings += others;
}

} // namespace

class TestShakeRecognizer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

void TestShakeRecognizer::recognisesAShakeInTime_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::addColumn<QList<double>>("rates");

    const QList<double> usual{50, 20};
    QTest::newRow("along x") << shake(3, 2, {1, 0, 0}) << usual;
    QTest::newRow("up and down") << shake(3, 2, {0, 0, 1}) << usual;
    QTest::newRow("askew") << shake(3, 2, {-0.6F, 0, 0.8F}) << usual;
    QTest::newRow("slow and weak") << shake(2.5, 1.8, {0.6F, 0.8F, 0}) << usual;
    QTest::newRow("slow and strong") << shake(2.5, 3, {0, 0.6F, 0.8F}) << usual;
    QTest::newRow("quick and weak") << shake(5, 1.8, {0.6F, 0, 0.8F}) << usual;
    QTest::newRow("quick and strong") << shake(5, 3, {0, 1, 0}) << usual;
    QTest::newRow("as a human does it") << Maker(humanShake) << usual;
    QTest::newRow("along a bent line") << Maker(bentShake) << usual;
    QTest::newRow("other rates") << shake(3, 2, {0.8F, 0, 0.6F}) << QList<double>{15, 33, 100, 417};
}

void TestShakeRecognizer::recognisesAShakeInTime()
{
    forEachRecording(shakeStart + 0.8, [](const QList<double> &times, const QByteArray &where) {
        QVERIFY2(times.size() == 1 && times.constFirst() > shakeStart, where.constData());
    });
}

void TestShakeRecognizer::staysSilentWhenTheDeviceOnlyMoves_data()
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
    QTest::newRow("bumps in a row") << blows(6, 60, 0.2) << fast;
}

void TestShakeRecognizer::staysSilentWhenTheDeviceOnlyMoves()
{
    forEachRecording(6, [](const QList<double> &times, const QByteArray &where) {
        QVERIFY2(times.isEmpty(), where.constData());
    });
}

void TestShakeRecognizer::needsFourSwings()
{
    QList<Reading> threeSwings = clearShake(0, shakeStart + 0.5);
    append(threeSwings, clearShake(0, shakeStart), 1'500'000);
    QVERIFY(shakesIn(threeSwings).isEmpty());
}

void TestShakeRecognizer::isMuteForHalfASecond()
{
    Random random(1);
    const QList<double> times = shakesIn(record(shake(5, 2, {1, 0, 0})(random), 0, 5, 50, random));
    QVERIFY(times.size() > 3);
    for (qsizetype i = 1; i < times.size(); ++i)
        QVERIFY(times.at(i) - times.at(i - 1) > 0.5);
}

void TestShakeRecognizer::copesWithBadReadings_data()
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
    row("greatest ones in between", spoilt(std::numeric_limits<double>::max()), 1);

    QList<Reading> twice;
    QList<Reading> timeless = clearShake();
    for (Reading &reading : timeless) {
        twice << reading << Reading{reading.time, -30, 30, 30};
        reading.time = 5;
    }
    row("each time twice", twice, 1);
    row("one time for all", timeless, 0);

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

void TestShakeRecognizer::copesWithBadReadings()
{
    QFETCH(const QList<Reading>, readings);
    QTEST(shakesIn(readings).size(), "shakes");
}

void TestShakeRecognizer::recognisesAShakeThatWasUnderWayBefore_data()
{
    QTest::addColumn<double>("pause");
    QTest::newRow("first readings ever") << 0.;
    QTest::newRow("after a pause of the sensor") << 60.;
}

void TestShakeRecognizer::recognisesAShakeThatWasUnderWayBefore()
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

QTEST_APPLESS_MAIN(TestShakeRecognizer)
#include "tst_shake_recognizer.moc"
