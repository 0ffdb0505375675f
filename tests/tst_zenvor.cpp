#include "platform/bundle.h"
#include "platform/device.h"
#include "support/log_recorder.h"
#include "support/test_service.h"

#include <zenvor/report_service.h>
#include <zenvor/shake.h>
#include <zenvor/zenvor.h>

#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>

#include <memory>
#include <vector>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::LogRecorder;
using test::TestService;

namespace {

const auto configured =
    uR"(info Zenvor: Zenvor configured. shakeToOpenEnabled=\(configuration.shakeToOpenEnabled, privacy: .public))"_s;
const auto started = u"info ShakeDetector: Shake detection started (native motion event)."_s;
const auto stopped = u"info ShakeDetector: Shake detection stopped."_s;
const auto flushed = u"debug Zenvor: Device ping queue flushed."_s;
const auto requested = u"info Zenvor: Manual/automatic present requested."_s;
const auto unconfigured = u"error Zenvor: Presentation failed: Zenvor not configured."_s;
const auto windowless = u"error Zenvor: Presentation failed: topViewController could not be found."_s;

} // namespace

class TestZenvor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_service.reset(); }
    void presentsNothingBeforeItIsConfigured(); // first: a configuration cannot be taken back
    void registersNoAppWithoutIdentifier();
    void registersTheDeviceWithEachConfiguration();
    void opensOnAShakeUntilItIsStopped();
    void takesCallsFromOtherThreads();
    void endsQuietlyWithItsProcess_data();
    void endsQuietlyWithItsProcess();
    void worksForEachApplicationObject();
    void takesCallsFromManyThreadsAtOnce();

private:
    QList<QJsonObject> pings() const
    {
        QList<QJsonObject> bodies;
        for (const auto &request : m_service.requests())
            bodies.append(QJsonDocument::fromJson(request.body).object());
        return bodies;
    }

    TestService m_service;
};

void TestZenvor::initTestCase()
{
    QVERIFY(setReportServiceUrl(m_service.url()));
    QGuiApplication::setDesktopFileName(TestService::bundleId());
}

void TestZenvor::presentsNothingBeforeItIsConfigured()
{
    LogRecorder log;
    Zenvor::shared().present();
    QCOMPARE(log.lines(), QStringList{requested});
    QTRY_COMPARE(log.lines(), (QStringList{requested, unconfigured}));
    QVERIFY(pings().isEmpty());
}

void TestZenvor::registersNoAppWithoutIdentifier()
{
    LogRecorder log;
    for (const auto &blank : {QString(), u" \n"_s}) {
        QGuiApplication::setDesktopFileName(blank);
        Zenvor::shared().configure(TestService::token(), false);
    }
    QGuiApplication::setDesktopFileName(TestService::bundleId());
    Zenvor::shared().configure(TestService::token(), false);
    QTRY_VERIFY(log.lines().contains(flushed));
    QCOMPARE(log.lines().count(flushed), 1);
    QCOMPARE(pings().size(), 1);
}

void TestZenvor::registersTheDeviceWithEachConfiguration()
{
    LogRecorder log;
    for (const auto &token : {u"first"_s, TestService::token()}) {
        const bool isFirst = token == "first"_L1;
        Zenvor::shared().configure(token, isFirst);
        QTRY_VERIFY(log.lines().contains(flushed));
        QCOMPARE(log.take(), (QStringList{configured, isFirst ? started : stopped, flushed}));
        const auto ping = pings().last();
        QCOMPARE(ping.value("token"_L1).toString(), token);
        QCOMPARE(ping.value("bundle_id"_L1).toString(), TestService::bundleId());
        QCOMPARE(ping.value("device_id"_L1).toString(), Device::identifierForVendor(Bundle::main()));
    }
}

void TestZenvor::opensOnAShakeUntilItIsStopped()
{
    QWindow window;
    window.show();
    window.requestActivate();
    QTRY_COMPARE(QGuiApplication::focusWindow(), &window);

    LogRecorder log;
    Zenvor::shared().configure(TestService::token(), true);
    QVERIFY(sendShake());
    QTRY_VERIFY(log.lines().contains(flushed) && log.lines().contains(windowless)); // no Quick window
    auto lines = log.take();
    lines.removeAll(flushed);
    lines.removeAll(windowless);
    QCOMPARE(
        lines,
        (QStringList{configured, started, u"info ShakeDetector: Shake detected via native motion event."_s,
                     u"info Zenvor: Shake callback received in Zenvor."_s, requested}));
    Zenvor::shared().stop();
    QVERIFY(sendShake());
    QCOMPARE(log.take(), QStringList{stopped});
}

void TestZenvor::takesCallsFromOtherThreads()
{
    LogRecorder log;
    const std::unique_ptr<QThread> thread(QThread::create([] {
        Zenvor::shared().configure(TestService::token(), true);
        Zenvor::shared().stop();
        Zenvor::shared().present();
    }));
    thread->start();
    QVERIFY(thread->wait());
    QCOMPARE(log.lines(), QStringList{requested});
    QTRY_VERIFY(log.lines().contains(flushed) && log.lines().contains(windowless));
    auto lines = log.take();
    lines.removeAll(flushed);
    QCOMPARE(lines, (QStringList{requested, configured, started, stopped, windowless}));
}

void TestZenvor::endsQuietlyWithItsProcess_data()
{
    QTest::addColumn<QString>("ending");
    for (const auto *ending : {"no-application", "before-its-events", "request-under-way"})
        QTest::newRow(ending) << QString::fromLatin1(ending);
}

void TestZenvor::endsQuietlyWithItsProcess()
{
    QFETCH(const QString, ending);
    m_service.reset(R"({"status":200,"delayMs":20000})");
    QProcess host;
    host.start(QCoreApplication::applicationFilePath(), {u"--host"_s, ending, m_service.url().toString()});
    QVERIFY(QTest::qWaitFor([&host] { return host.state() == QProcess::NotRunning; }, 15000));
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(host.exitCode(), 0);
    QCOMPARE(pings().isEmpty(), ending != "request-under-way"_L1);
    const auto errors = QString::fromUtf8(host.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts);
    for (const auto &line : errors)
        QVERIFY2(line.startsWith("com.zenvor.sdk."_L1), qPrintable(line));
}

void TestZenvor::worksForEachApplicationObject()
{
    QProcess host;
    host.start(QCoreApplication::applicationFilePath(), {u"--several"_s, m_service.url().toString()});
    QVERIFY(QTest::qWaitFor([&host] { return host.state() == QProcess::NotRunning; }, 15000));
    QCOMPARE(host.exitStatus(), QProcess::NormalExit);
    QVERIFY2(host.exitCode() == 0, host.readAllStandardError().constData());
    QVERIFY(pings().size() >= 2);
}

void TestZenvor::takesCallsFromManyThreadsAtOnce()
{
    constexpr int threads = 8;
    constexpr int calls = 50;
    LogRecorder log;
    std::vector<std::unique_ptr<QThread>> callers;
    for (int i = 0; i < threads; ++i) {
        callers.emplace_back(QThread::create([] {
            for (int call = 0; call < calls; ++call) {
                auto &zenvor = Zenvor::shared();
                zenvor.configure(TestService::token(), call % 2 == 0);
                zenvor.present();
                zenvor.addPendingAttachmentData("bytes", u"video/mp4"_s);
                zenvor.stop();
            }
        }));
        callers.back()->start();
    }
    for (int call = 0; call < calls; ++call) { // and on the thread where it all belongs
        Zenvor::shared().configure(TestService::token(), true);
        QCoreApplication::processEvents();
    }
    for (const auto &caller : callers)
        QVERIFY(caller->wait());
    QTRY_COMPARE_WITH_TIMEOUT(log.lines().count(windowless), threads * calls, 30000);
    QCOMPARE(log.lines().count(requested), threads * calls);
    QCOMPARE(log.lines().count(configured), (threads + 1) * calls);
    QTRY_COMPARE_WITH_TIMEOUT(log.lines().count(flushed), (threads + 1) * calls, 30000);
    for (const auto &ping : pings())
        QCOMPARE(ping.value("token"_L1).toString(), TestService::token());
    QVERIFY(!pings().isEmpty());
}

namespace {

void useEverything()
{
    auto &zenvor = Zenvor::shared();
    zenvor.configure(TestService::token(), true);
    zenvor.present();
    zenvor.setPendingAttachmentFiles({QUrl(u"file:///nowhere.png"_s)});
    zenvor.addPendingAttachmentData("bytes", u"video/mp4"_s);
    zenvor.clearPendingAttachments();
    zenvor.stop();
}

// A host that ends in the middle of its work with the library.
int runHost(const QString &ending, const QUrl &service, int argc, char **argv)
{
    setReportServiceUrl(service);
    if (ending == "no-application"_L1) {
        useEverything();
        return 0;
    }
    QGuiApplication::setDesktopFileName(TestService::bundleId());
    {
        QGuiApplication application(argc, argv);
        useEverything();
        if (ending == "request-under-way"_L1) {
            QTimer::singleShot(500, &application, &QCoreApplication::quit);
            application.exec();
        }
    }
    useEverything();
    return 0;
}

// A host that makes one application object after the other, and knows its identifier only after the first
// configuration. Prints how many shakes arrived, and ends when its pings have.
int runSeveral(const QUrl &service, int argc, char **argv)
{
    setReportServiceUrl(service);
    int shakes = 0;
    for (int i = 0; i < 2; ++i) {
        QGuiApplication application(argc, argv);
        const LogRecorder log;
        Zenvor::shared().configure(TestService::token(), true);
        QGuiApplication::setDesktopFileName(TestService::bundleId());
        Zenvor::shared().configure(TestService::token(), true);
        QWindow window;
        window.show();
        window.requestActivate();
        if (!QTest::qWaitFor([&window] { return QGuiApplication::focusWindow() == &window; }))
            return 1;
        if (i > 0)
            QTest::qWait(1201); // two shakes are not one
        shakes += sendShake();
        const bool isHeard = log.lines().contains(u"info Zenvor: Shake callback received in Zenvor."_s);
        if (!isHeard || !QTest::qWaitFor([&log] { return log.lines().contains(flushed); }))
            return 2;
    }
    return shakes == 2 ? 0 : 3;
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", data.path().toLocal8Bit());
    if (argc > 2 && argv[1] == "--several"_ba)
        return runSeveral(QUrl(QString::fromLocal8Bit(argv[2])), argc, argv);
    if (argc > 3 && argv[1] == "--host"_ba)
        return runHost(QString::fromLocal8Bit(argv[2]), QUrl(QString::fromLocal8Bit(argv[3])), argc, argv);
    QGuiApplication application(argc, argv);
    TestZenvor test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_zenvor.moc"
