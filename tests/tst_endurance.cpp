#include "client/report_client.h"
#include "client/report_client_error.h"
#include "platform/stop_token.h"
#include "support/await.h"
#include "support/fast_clock.h"
#include "support/report.h"
#include "support/sanitized.h"
#include "support/session.h"

#include <zenvor/report_service.h>

#include <QDir>
#include <QProcess>
#include <QTest>

#include <cstdio>

#ifdef __GLIBC__
#include <malloc.h>
#endif

using namespace zenvor;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using test::TestService;

namespace {

/// What this process holds on to.
struct Holding
{
    qsizetype heap = 0; ///< bytes in use
    qsizetype descriptors = 0;
    qsizetype threads = 0;

    static Holding now()
    {
        Holding holding{
            .heap = 0, .descriptors = entries(u"/proc/self/fd"_s), .threads = entries(u"/proc/self/task"_s)};
#ifdef __GLIBC__
        if constexpr (!test::isSanitized) {
            const auto heap = mallinfo2();
            holding.heap = qsizetype(heap.uordblks + heap.hblkhd);
        }
#endif
        return holding;
    }

private:
    static qsizetype entries(const QString &folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
    }
};

} // namespace

/// Ten thousand requests of one process, with every kind of end.
class TestEndurance : public QObject
{
    Q_OBJECT

public:
    ~TestEndurance() override
    {
        m_service.kill();
        m_service.waitForFinished();
    }

private Q_SLOTS:
    void initTestCase();
    void holdsOnToNothing();

private:
    /// What a host asks for over a long time. Gives how much of it the service granted.
    int makeRequests();
    int submitReport();
    template<typename T>
    int end(Task<T> task);

    QProcess m_service; // a process of its own, so that what it keeps is not counted
    const test::FastClock m_clock{100};
    test::TestedSession m_session{m_clock};
    ReportClient m_client{ZenvorConfiguration(TestService::token(), false), m_session, m_clock};
};

void TestEndurance::initTestCase()
{
    m_service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_service.start(QCoreApplication::applicationFilePath(), {u"--service"_s});
    QVERIFY(m_service.waitForReadyRead(20000));
    QVERIFY(setReportServiceUrl(QUrl(QString::fromUtf8(m_service.readLine().trimmed()))));
}

template<typename T>
int TestEndurance::end(Task<T> task)
{
    try {
        test::await(std::move(task));
    } catch (const ReportClientError &) {
        return 0;
    } catch (const ServiceError &) {
        return 0;
    }
    return 1;
}

int TestEndurance::makeRequests()
{
    const ReportClient stranger(ZenvorConfiguration(u"unknown"_s, false), m_session, m_clock);
    StopSource stop;
    auto stopped = m_client.pingDevice(TestService::bundleId(), u"stopped"_s, stop.token());
    auto beside = m_client.validateToken(u"beside"_s);
    stop.requestStop();
    return end(m_client.validateToken(u"app"_s)) + end(stranger.validateToken(u"app"_s))
        + end(m_client.pingDevice(u"app"_s, u"device"_s)) + end(std::move(stopped)) + end(std::move(beside));
}

int TestEndurance::submitReport()
{
    return end(m_client.submit(test::report(), {{QByteArray(40'000, 's'), u"image/png"_s, u"screenshot"_s}}));
}

void TestEndurance::holdsOnToNothing()
{
    constexpr int rounds = test::isSanitized ? 200 : 1'800; // of five requests, and four more in each eighth
    Holding before;
    int granted = 0;
    for (int round = 0; round < rounds; ++round) {
        if (round == rounds / 2) // by then every pool and cache is as large as it gets
            before = Holding::now();
        granted += makeRequests();
        if (round % 8 == 0)
            granted += submitReport();
    }
    QVERIFY2(granted > 2 * rounds, qPrintable(QString::number(granted)));
    const auto after = Holding::now();
    qInfo("heap %+lld bytes, descriptors %+lld, threads %+lld", qlonglong(after.heap - before.heap),
          qlonglong(after.descriptors - before.descriptors), qlonglong(after.threads - before.threads));
    QVERIFY(after.heap - before.heap < 512 * 1024); // not a hundred bytes for each of five thousand requests
    QVERIFY(after.descriptors - before.descriptors < 8);
    QVERIFY(after.threads - before.threads < 4);
}

namespace {

// The service, which loses a connection now and then.
int runService(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    TestService service;
    std::puts(service.url().toEncoded().constData());
    std::fflush(stdout);
    QTimer forget;
    QObject::connect(&forget, &QTimer::timeout,
                     [&service] { service.reset(R"({"skip":40,"cut":"inBody"})"); });
    forget.start(100ms);
    return application.exec();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && argv[1] == "--service"_ba)
        return runService(argc, argv);
    QCoreApplication application(argc, argv);
    TestEndurance test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_endurance.moc"
