#include "client/report_client.h"
#include "pingqueue/device_ping_queue.h"
#include "platform/awaitable_callback.h"
#include "platform/process_session.h"
#include "support/await.h"
#include "support/certificate.h"
#include "support/report.h"
#include "support/sanitized.h"
#include "support/session.h"

#include <zenvor/report_service.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSocketNotifier>
#include <QTest>

#include <atomic>
#include <cstdio>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::TestService;

namespace {

constexpr int pings = 3;
constexpr int momentsOfEach = test::isSanitized ? 4 : 16;

// How a host ends: its main() returns, somebody calls exit(), or the system ends it.
const QStringList endings{u"return"_s, u"exit"_s, u"kill"_s};

QList<DevicePingQueueEntry> due()
{
    QList<DevicePingQueueEntry> entries;
    for (int i = 0; i < pings; ++i)
        entries.append({TestService::bundleId(), QString::number(i), i, 0});
    return entries;
}

} // namespace

/// A host that ends while the library works: at once, without a word, and without losing a ping.
class TestProcessEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void endsAtEachStep_data();
    void endsAtEachStep();
    void endsAtAnyMoment_data();
    void endsAtAnyMoment();
    void startsNothingAtTheEnd();
    void waitsForWorkOnTheThreadPool();

private:
    void startHost(const QString &work, TestService &service);
    /// What does not hold; nothing if all does.
    QString end(const QString &ending, TestService &service);
    QString storeProblem(TestService &service) const;

    const test::Certificate m_certificate;
    TestService m_plain;
    TestService m_secure{m_certificate.certificateFile(), m_certificate.keyFile()};
    std::unique_ptr<QTemporaryDir> m_store;
    std::unique_ptr<QProcess> m_host;
};

void TestProcessEnd::init()
{
    m_plain.reset();
    m_secure.reset();
}

void TestProcessEnd::startHost(const QString &work, TestService &service)
{
    m_store = std::make_unique<QTemporaryDir>();
    UserDefaults(m_store->path()).setData(DevicePingQueue::storageKey(), *toJson(due()));
    m_host = std::make_unique<QProcess>();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"SSL_CERT_FILE"_s, m_certificate.certificateFile());
    // Qt's threads free what OpenSSL keeps for each of them a moment after Qt has waited for them.
    if (test::isQtSession)
        environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":detect_leaks=0"_s);
    m_host->setProcessEnvironment(environment);
    m_host->start(QCoreApplication::applicationFilePath(),
                  {u"--host"_s, work, service.url().toString(), m_store->path()});
    QVERIFY(QTest::qWaitFor([this] { return m_host->bytesAvailable() > 0; }, 20000));
}

QString TestProcessEnd::end(const QString &ending, TestService &service)
{
    const bool isKilled = ending == "kill"_L1;
    QElapsedTimer timer;
    timer.start();
    if (isKilled)
        m_host->kill();
    else
        m_host->write(ending.toUtf8() + '\n');
    if (!QTest::qWaitFor([this] { return m_host->state() == QProcess::NotRunning; }, 20000))
        return u"does not end"_s;
    if (timer.elapsed() > (test::isSanitized ? 10000 : 3000))
        return u"ends after %1 ms"_s.arg(timer.elapsed());
    if ((m_host->exitStatus() != QProcess::NormalExit) != isKilled)
        return u"crashes"_s;
    if (!isKilled && m_host->exitCode() != 0)
        return u"exit code %1"_s.arg(m_host->exitCode());
    if (const auto words = m_host->readAllStandardError(); !words.isEmpty())
        return u"says "_s + QString::fromUtf8(words);
    return storeProblem(service);
}

// The list is as it was before, or as it is once every ping is known to have arrived.
QString TestProcessEnd::storeProblem(TestService &service) const
{
    const auto stored = UserDefaults(m_store->path()).data(DevicePingQueue::storageKey());
    if (stored == toJson(due()))
        return {};
    // More than those: the last one of an earlier host may have come late.
    const bool haveAllArrived = service.requestLines().count("POST /v1/sdk/devices/ping"_L1) >= pings;
    return stored == toJson({}) && haveAllArrived ? QString()
                                                  : u"the store holds "_s + QString::fromUtf8(*stored);
}

void TestProcessEnd::endsAtEachStep_data()
{
    QTest::addColumn<QString>("work");
    QTest::addColumn<int>("request");
    QTest::addColumn<QByteArray>("place");
    QTest::addColumn<QString>("ending");
    const QByteArrayList places{"\"stall\":\"beforeHeaders\"", "\"stall\":\"inHeaders\"",
                                "\"stall\":\"inBody\",\"bodySize\":1000",
                                "\"when\":\"head\",\"stopReading\":true"};
    const std::pair<QString, int> works[] = {{u"flush"_s, pings}, {u"submit"_s, 7}};
    for (const auto &[work, requests] : works) {
        for (int request = 0; request < requests; ++request) {
            for (const auto &place : places) {
                for (const auto &ending : endings)
                    QTest::addRow("%s %d %s %s", qPrintable(work), request, place.constData(),
                                  qPrintable(ending))
                        << work << request << place << ending;
            }
        }
    }
}

void TestProcessEnd::endsAtEachStep()
{
    QFETCH(const QString, work);
    QFETCH(const int, request);
    QFETCH(const QByteArray, place);
    QFETCH(const QString, ending);
    m_plain.reset("{\"skip\":" + QByteArray::number(request) + ',' + place + '}');
    startHost(work, m_plain);
    QTRY_VERIFY_WITH_TIMEOUT(m_plain.requests().size() > request, 20000);
    QCOMPARE(end(ending, m_plain), QString());
    QCOMPARE(m_plain.requests().size(), request + 1);
}

void TestProcessEnd::endsAtAnyMoment_data()
{
    QTest::addColumn<QString>("work");
    QTest::addColumn<bool>("isSecure");
    QTest::addColumn<QString>("ending");
    for (const auto *work : {"flush", "submit"}) {
        for (const bool isSecure : {false, true}) {
            for (const auto &ending : endings)
                QTest::addRow("%s %s %s", work, isSecure ? "https" : "http", qPrintable(ending))
                    << QString::fromLatin1(work) << isSecure << ending;
        }
    }
}

void TestProcessEnd::endsAtAnyMoment()
{
    QFETCH(const QString, work);
    QFETCH(const bool, isSecure);
    QFETCH(const QString, ending);
    auto &service = isSecure ? m_secure : m_plain;
    for (int i = 0; i < momentsOfEach; ++i) {
        service.reset();
        startHost(work, service);
        const int ms = QRandomGenerator::global()->bounded(i % 2 ? 5 : 60);
        QTest::qWait(ms);
        const auto problem = end(ending, service);
        QVERIFY2(problem.isEmpty(), qPrintable(u"after %1 ms: %2"_s.arg(ms).arg(problem)));
    }
}

void TestProcessEnd::startsNothingAtTheEnd()
{
    startHost(u"late"_s, m_plain);
    QCOMPARE(end(u"exit"_s, m_plain), QString());
    QCOMPARE(m_plain.requests().size(), 0);
}

void TestProcessEnd::waitsForWorkOnTheThreadPool()
{
    startHost(u"work"_s, m_plain);
    QCOMPARE(end(u"exit"_s, m_plain), QString());
}

namespace {

std::atomic<bool> areStaticObjectsThere = true;

// What goes while other threads may still run; there may be many of it.
struct StaticObject
{
    int destructionTime = 20;

    ~StaticObject()
    {
        areStaticObjectsThere = false;
        QTest::qSleep(destructionTime);
    }
};

Task<> useStaticObjectsSlowly()
{
    QTest::qSleep(300);
    if (!areStaticObjectsThere)
        std::_Exit(9);
    co_return;
}

// Stands for a pool thread that gets to its request when the process is already ending.
struct LateRequest
{
    QUrl url;
    HttpSession *session = nullptr;

    ~LateRequest()
    {
        if (!session)
            return;
        HttpRequest request;
        request.url = url;
        session->start(std::move(request), {}, [](const HttpSession::Result &) {});
        QTest::qSleep(300);
    }
};

// Ends as the line says that comes on the standard input.
int runHost(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    setReportServiceUrl(QUrl(arguments.at(3)));
    static StaticObject staticObject;
    // Goes after what is made after it, the end of the session.
    thread_local LateRequest late{QUrl(arguments.at(3) + "/v1/sdk/late"_L1)};
    auto &session = processSession<test::TestedSession>();
    const ReportClient client({TestService::token(), false}, session);
    static auto *queue = new DevicePingQueue(UserDefaults(arguments.at(4))); // outlives its calls

    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [] {
        char ending[16] = {};
        if (std::fgets(ending, sizeof ending, stdin) && ending == "exit\n"_ba)
            std::exit(0);
        QCoreApplication::quit();
    });
    const ReportUploadAttachment screenshot{QByteArray(100'000, 's'), u"image/png"_s, u"screenshot"_s};
    const ReportUploadAttachment video{QByteArray(12'000'000, 'v'), u"video/mp4"_s, u"video"_s};
    // Detached, as the library itself does it.
    if (arguments.at(2) == "flush"_L1)
        queue->flush(client, pings);
    else if (arguments.at(2) == "late"_L1)
        late.session = &session;
    else if (arguments.at(2) == "work"_L1) {
        staticObject.destructionTime = 500;
        runOn(makeBackgroundExecutor(), useStaticObjectsSlowly);
    } else
        client.submit(test::report(), {screenshot, video});
    std::puts("started");
    std::fflush(stdout);
    return application.exec();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 4 && argv[1] == "--host"_ba)
        return runHost(argc, argv);
    QCoreApplication application(argc, argv);
    TestProcessEnd test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_process_end.moc"
