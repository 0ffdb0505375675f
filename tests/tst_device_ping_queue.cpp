#include "client/report_client_error.h"
#include "pingqueue/device_ping_queue.h"
#include "pingqueue/device_ping_rules.h"
#include "support/await.h"
#include "support/session.h"
#include "support/test_service.h"

#include <zenvor/report_service.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::TestService;

namespace {

class SettableClock final : public Clock
{
public:
    QDateTime currentDateTime() const override { return moment; }
    double seconds() const { return referenceSeconds(moment); }
    QDateTime moment = QDateTime::fromMSecsSinceEpoch(1763163330250, Qt::UTC);
};

using Entries = QList<DevicePingQueueEntry>;

// Entries of devices "0", "1", … due so many seconds after the moment \a now.
Entries dueAfter(double now, const QList<double> &seconds)
{
    Entries entries;
    for (const double second : seconds)
        entries.append({u"b"_s, QString::number(entries.size()), 0, now + second});
    return entries;
}

QString devices(const Entries &entries)
{
    QStringList names;
    for (const auto &entry : entries)
        names.append(entry.deviceId);
    return names.join(u' ');
}

} // namespace

class TestDevicePingQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(setReportServiceUrl(m_service.url())); }
    void init();
    void storesWhatAnotherProcessReads();
    void discardsAListThatIsNotWhole_data();
    void discardsAListThatIsNotWhole();
    void keepsTheCountOfAPingThatIsWantedAgain();
    void storesNoBlankPing();
    void dropsThePingFurthestInTheFuture_data();
    void dropsThePingFurthestInTheFuture();
    void choosesByDueTimeAndSendsFromTheBack();
    void keepsAPingThatFailedForAPassingReason_data();
    void keepsAPingThatFailedForAPassingReason();
    void waitsLongerAfterEachFailure();
    void forgetsWhatItDeliveredOrGaveUp();
    void leavesTheStoreAloneWithoutDuePings();
    void lastWriterWinsWhileAFlushWaits();
    void survivesAStoreThatCannotBeUsed();
    void keepsTheOldListOrTheNewWhenItsProcessIsKilled();

private:
    void store(const Entries &entries)
    {
        m_storage->setData(DevicePingQueue::storageKey(), *toJson(entries));
    }
    Entries stored()
    {
        return devicePingQueueEntries(m_storage->data(DevicePingQueue::storageKey()).value_or(""));
    }

    TestService m_service;
    SettableClock m_clock;
    test::TestedSession m_session{Clock::system()};
    const ReportClient m_client{ZenvorConfiguration(TestService::token(), false), m_session};
    std::unique_ptr<QTemporaryDir> m_folder;
    std::optional<UserDefaults> m_storage;
    std::optional<DevicePingQueue> m_queue;
};

void TestDevicePingQueue::init()
{
    m_service.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    m_storage.emplace(m_folder->filePath(u"store"_s));
    m_queue.emplace(*m_storage, m_clock);
}

void TestDevicePingQueue::storesWhatAnotherProcessReads()
{
    test::await(m_queue->enqueue(u" com.example \n"_s, u"\tD"_s));
    const auto json = m_storage->data(DevicePingQueue::storageKey()).value();
    const auto object = QJsonDocument::fromJson(json).array().at(0).toObject();
    const QJsonObject expected{{u"bundleId"_s, u"com.example"_s},
                               {u"deviceId"_s, u"D"_s},
                               {u"attemptCount"_s, 0},
                               {u"nextAttemptAt"_s, 1763163330.25 - 978307200}};
    QCOMPARE(object, expected);
}

void TestDevicePingQueue::discardsAListThatIsNotWhole_data()
{
    QTest::addColumn<QByteArray>("json");

    const auto good = R"({"bundleId":"b","deviceId":"d","attemptCount":1,"nextAttemptAt":1.5})"_ba;
    QTest::newRow("a number in the list") << '[' + good + ",1]";
    QTest::newRow("no count") << '[' + good + R"(,{"bundleId":"b","deviceId":"e","nextAttemptAt":1}])";
    QTest::newRow("half a count") << '[' + QByteArray(good).replace(":1,", ":1.5,") + ']';
    QTest::newRow("a text as moment") << '[' + QByteArray(good).replace("1.5", "\"1.5\"") + ']';
    QTest::newRow("two megabytes") << '[' + QByteArray(2000000, ' ') + good + ']';
}

void TestDevicePingQueue::discardsAListThatIsNotWhole()
{
    QFETCH(QByteArray, json);
    m_storage->setData(DevicePingQueue::storageKey(), json);
    test::await(m_queue->flush(m_client, 3));
    QVERIFY(m_service.requests().isEmpty());
    test::await(m_queue->enqueue(u"b"_s, u"new"_s));
    QCOMPARE(devices(stored()), u"new"_s);
}

void TestDevicePingQueue::keepsTheCountOfAPingThatIsWantedAgain()
{
    const double now = m_clock.seconds();
    store({{u"b"_s, u"0"_s, 7, now + 3600}, {u"b"_s, u"1"_s, 2, now - 60}});
    test::await(m_queue->enqueue(u"b"_s, u"0"_s));
    test::await(m_queue->enqueue(u"b"_s, u"1"_s));
    QCOMPARE(stored(), (Entries{{u"b"_s, u"0"_s, 7, now}, {u"b"_s, u"1"_s, 2, now - 60}}));
}

void TestDevicePingQueue::storesNoBlankPing()
{
    test::await(m_queue->enqueue(u"   "_s, u"d"_s));
    test::await(m_queue->enqueue(u"b"_s, QString()));
    QVERIFY(!QDir(m_folder->filePath(u"store"_s)).exists());
}

void TestDevicePingQueue::dropsThePingFurthestInTheFuture_data()
{
    QTest::addColumn<QList<double>>("due");
    QTest::addColumn<QString>("kept");

    QList<double> later;
    for (int i = 0; i < 16; ++i)
        later.append(100 - i);
    QTest::newRow("one too many") << later << u"new 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1"_s;
    QTest::newRow("sixteen stay unsorted") << later.mid(1) << u"0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 new"_s;
    QTest::newRow("all at once") << QList<double>(16, 0.0) << u"0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15"_s;
    QTest::newRow("a longer stored list")
        << QList<double>(18, -1.0) << u"0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15"_s;
}

void TestDevicePingQueue::dropsThePingFurthestInTheFuture()
{
    QFETCH(QList<double>, due);
    QTEST(devices(withDevicePing(dueAfter(50, due), u"b"_s, u"new"_s, 50)), "kept");
}

void TestDevicePingQueue::choosesByDueTimeAndSendsFromTheBack()
{
    const auto entries = dueAfter(10, {-5, 60, -1, 0, 60, -5, -9});
    QCOMPARE(devicePingBatch(entries, 10, 3), (QList<qsizetype>{6, 5, 0}));
    QCOMPARE(devicePingBatch(entries, 10, 99), (QList<qsizetype>{6, 5, 3, 2, 0}));
    QVERIFY(devicePingBatch(entries, 10, 0).isEmpty());
}

void TestDevicePingQueue::keepsAPingThatFailedForAPassingReason_data()
{
    using Kind = ReportClientError::Kind;
    QTest::addColumn<std::shared_ptr<std::exception>>("error");
    QTest::addColumn<int>("attempt");
    QTest::addColumn<bool>("isKept");

    const auto row = [](const char *name, auto error, bool isKept, int attempt = 1) {
        QTest::newRow(name) << std::shared_ptr<std::exception>(std::make_shared<decltype(error)>(error))
                            << attempt << isKept;
    };
    row("404 as the client reports it", ServiceError(404, u"Device ping failed with status 404 (host=h)"_s),
        true);
    row("quoted status", std::runtime_error("Status Code: 403 it said"), false);
    row("other quoted status", std::runtime_error("status code: 402"), true);
    row("invalid token", ReportClientError(Kind::InvalidToken), false);
    for (const int status : {408, 429, 399})
        row(qPrintable(QString::number(status)), ReportClientError::unexpectedStatusCode(status), true);
    for (const int status : {400, 404, 499})
        row(qPrintable(QString::number(status)), ReportClientError::unexpectedStatusCode(status), false);
    row("attempt 49", ServiceError(500, {}), true, 49);
    row("attempt 50", ServiceError(500, {}), false, 50);
}

void TestDevicePingQueue::keepsAPingThatFailedForAPassingReason()
{
    QFETCH(std::shared_ptr<std::exception>, error);
    QFETCH(int, attempt);
    QFETCH(bool, isKept);
    const auto kept = afterFailure({u"b"_s, u"d"_s, attempt - 1, 5}, *error, 100);
    QCOMPARE(kept.has_value(), isKept);
    if (kept)
        QCOMPARE(*kept, (DevicePingQueueEntry{u"b"_s, u"d"_s, attempt, 100.0 + devicePingBackOff(attempt)}));
}

void TestDevicePingQueue::waitsLongerAfterEachFailure()
{
    QList<int> delays;
    for (const qint64 attempt : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 49})
        delays.append(devicePingBackOff(attempt));
    QCOMPARE(delays, (QList<int>{15, 15, 15, 20, 40, 80, 160, 320, 640, 1280, 2560, 3600, 3600}));
    const auto damaged =
        afterFailure({u"b"_s, u"d"_s, std::numeric_limits<qint64>::max(), 0}, std::exception(), 0);
    QVERIFY(!damaged);
    const auto negative =
        afterFailure({u"b"_s, u"d"_s, std::numeric_limits<qint64>::min(), 0}, std::exception(), 0);
    QCOMPARE(negative.value().attemptCount, 1); // else it would hardly ever be given up
}

void TestDevicePingQueue::forgetsWhatItDeliveredOrGaveUp()
{
    const double now = m_clock.seconds();
    store(dueAfter(now, {-3, -1, -2, -4, 60}));
    m_service.reset(R"([{"status":404},{"status":401},{"status":200}])"); // for "3", "2" and "0"
    test::await(m_queue->flush(m_client, 3));
    QStringList sent;
    for (const auto &request : m_service.requests())
        sent.append(QJsonDocument::fromJson(request.body).object().value("device_id"_L1).toString());
    QCOMPARE(sent.join(u' '), u"3 2 0"_s);
    QCOMPARE(stored(),
             (Entries{{u"b"_s, u"1"_s, 0, now - 1},
                      {u"b"_s, u"3"_s, 1, now + 15},
                      {u"b"_s, u"4"_s, 0, now + 60}}));
}

void TestDevicePingQueue::leavesTheStoreAloneWithoutDuePings()
{
    m_storage->setData(DevicePingQueue::storageKey(), " [] "_ba);
    test::await(m_queue->flush(m_client, 3));
    QCOMPARE(m_storage->data(DevicePingQueue::storageKey()), " [] "_ba);
}

void TestDevicePingQueue::lastWriterWinsWhileAFlushWaits()
{
    store(dueAfter(m_clock.seconds(), {0}));
    m_service.reset(R"({"status":200,"delayMs":100})");
    auto flush = m_queue->flush(m_client, 3);
    QTRY_COMPARE(m_service.requests().size(), 1);
    test::await(m_queue->enqueue(u"b"_s, u"meanwhile"_s)); // the waiting flush does not hold it up
    QCOMPARE(devices(stored()), u"0 meanwhile"_s);
    test::await(std::move(flush));
    QCOMPARE(devices(stored()), QString());
}

void TestDevicePingQueue::survivesAStoreThatCannotBeUsed()
{
    QFile blocked(m_folder->filePath(u"blocked"_s));
    QVERIFY(blocked.open(QIODevice::WriteOnly));
    for (const auto &folder : {blocked.fileName(), QString(), u"/proc/zenvor"_s}) {
        DevicePingQueue queue(UserDefaults(folder), m_clock);
        test::await(queue.enqueue(u"b"_s, u"d"_s));
        test::await(queue.flush(m_client, 3));
        QVERIFY(test::await(queue.entries()).isEmpty());
    }
}

void TestDevicePingQueue::keepsTheOldListOrTheNewWhenItsProcessIsKilled()
{
    const auto folder = m_folder->filePath(u"store"_s);
    int generation = -1;
    for (int round = 0; round < 40; ++round) {
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(),
                     {u"--write"_s, folder, QString::number(generation + 1)});
        QVERIFY(writer.waitForReadyRead(10000));
        QTest::qWait(round % 7);
        writer.kill();
        QVERIFY(writer.waitForFinished(10000));
        const auto entries = stored();
        QCOMPARE(entries.size(), maxDevicePings);
        for (const auto &entry : entries)
            QCOMPARE(entry.deviceId, entries.first().deviceId); // never parts of two lists
        QVERIFY(entries.first().deviceId.toInt() >= generation);
        generation = entries.first().deviceId.toInt();
    }
}

namespace {

// A process that saves one list after the other until it is killed.
int writeLists(const QString &folder, int generation)
{
    const UserDefaults storage(folder);
    for (;; ++generation) {
        const Entries list(maxDevicePings, {u"b"_s.repeated(2000), QString::number(generation), 0, 0});
        storage.setData(DevicePingQueue::storageKey(), *toJson(list));
        std::puts("written");
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc > 3 && argv[1] == "--write"_ba)
        return writeLists(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toInt());
    TestDevicePingQueue test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_device_ping_queue.moc"
