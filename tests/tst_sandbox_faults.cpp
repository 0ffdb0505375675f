#include "support/raw_client.h"
#include "support/test_service.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <chrono>

using namespace zenvor::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// How the sandbox misbehaves when it is told to, seen on the wire.
class TestSandboxFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_service.reset(); }
    void breaksAnAnswerOff_data();
    void breaksAnAnswerOff();
    void playsFaultyAnswers_data();
    void playsFaultyAnswers();
    void takesItsTime();
    void neverBuffersAnEndlessAnswer();
    void answersBeforeTheBody();
    void leavesTheBodyUnread();
    void storesTheReportBeforeItMisbehaves();
    void playsTheFirstFaultThatIsDue();
    void refusesWhatIsNoFault_data();
    void refusesWhatIsNoFault();

private:
    int pingStatus() const { return ask(m_service.url(), post(pingPath, goodPing())).status; }

    TestService m_service;
};

void TestSandboxFaults::breaksAnAnswerOff_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("place");
    QTest::addColumn<QByteArray>("state");
    for (const auto &[kind, state] : {std::pair("stall", "open"), {"cut", "ended"}, {"reset", "reset"}}) {
        for (const char *place : {"beforeHeaders", "inHeaders", "inBody"})
            QTest::addRow("%s %s", kind, place) << QByteArray(kind) << QByteArray(place) << QByteArray(state);
    }
}

void TestSandboxFaults::breaksAnAnswerOff()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, place);
    QFETCH(QByteArray, state);
    m_service.reset("{\""_ba + kind + "\": \""_ba + place + "\", \"body\": \"0123456789\"}"_ba);
    SystemClient client(m_service.url(), post(pingPath, goodPing()));
    const bool isSilent = place == "beforeHeaders"_ba;
    const auto isThere = [&] {
        return client.state() == state && m_service.requests().size() == 1
            && isSilent == client.received.isEmpty();
    };
    QVERIFY(waitUntil(isThere));
    const QByteArray sofar = client.received;
    if (kind == "stall"_ba)
        QVERIFY(!waitUntil([&] { return client.state() != state || client.received != sofar; }, 100ms));
    QCOMPARE(sofar.contains("\r\n\r\n"), place == "inBody"_ba);
    QCOMPARE(sofar.endsWith("01234"), place == "inBody"_ba);
}

void TestSandboxFaults::playsFaultyAnswers_data()
{
    QTest::addColumn<QByteArray>("form"); // a regular expression for all bytes until the end
    const auto row = [](const char *fault, const char *form) {
        QTest::newRow(fault) << QByteArray(form);
    };
    row(R"({"status": 503, "headers": {"Retry-After": "2"}, "body": "later"})",
        "\\AHTTP/1.1 503 .*Retry-After: 2\r\n.*\r\n\r\nlater\\z");
    row(R"({"redirect": "http://127.0.0.1:1/x"})", "\\AHTTP/1.1 307 .*Location: http://127.0.0.1:1/x\r\n");
    row(R"({"redirect": "http://127.0.0.1:1{target}"})",
        "\\AHTTP/1.1 307 .*Location: http://127.0.0.1:1/v1/sdk/devices/ping\r\n");
    row(R"({"status": 101, "cut": "inBody"})", "\\AHTTP/1.1 101 [^:]*\r\n\r\n\\z");
    row(R"({"padding": 3})", "Content-Length: 27\r\n.*\r\n\r\n\\{\"padding\":\"xxx\",\"ok\":true\\}\\z");
    row(R"({"informational": [102, 103]})",
        "\\AHTTP/1.1 102 .*\r\n\r\nHTTP/1.1 103 .*\r\n\r\nHTTP/1.1 200 .*\"ok\":true");
    row(R"({"garbage": "SSH-2.0"})", "\\ASSH-2.0\\z");
    row(R"({"chunked": true, "body": "12345"})",
        "Transfer-Encoding: chunked\r\n.*\r\n\r\n5\r\n12345\r\n0\r\n\r\n\\z");
    row(R"({"chunked": true, "status": 201})", "Transfer-Encoding: chunked\r\n.*\r\n\r\n0\r\n\r\n\\z");
    row(R"({"badChunk": true, "body": "12345"})", "\r\n\r\n5\r\n12345\r\nno size\r\n\\z");
    row(R"({"contentLength": 99, "body": "12345"})", "Content-Length: 99\r\n.*\r\n\r\n12345\\z");
    row(R"({"contentLength": 2, "body": "12345"})", "Content-Length: 2\r\n.*\r\n\r\n12345\\z");
    row(R"({"bodyBase64": "AAH/", "status": 500})",
        "Content-Length: 3\r\n.*\r\n\r\n\\x{00}\\x{01}\\x{ff}\\z");
    // The last four bytes of gzip are the size of what it holds.
    row(R"({"gzip": true, "bodySize": 50000000, "contentLength": 60000000})",
        "Content-Encoding: gzip\r\n.*\r\n\r\n\\x{1f}\\x{8b}.*\\x{80}\\x{f0}\\x{fa}\\x{02}\\z");
}

void TestSandboxFaults::playsFaultyAnswers()
{
    QFETCH(QByteArray, form);
    m_service.reset(QByteArray(QTest::currentDataTag()));
    RawClient client(m_service.url());
    client.send(post(pingPath, goodPing()).replace("Host:"_ba, "Connection: close\r\nHost:"_ba));
    const QByteArray received = client.receiveAll();
    const QRegularExpression expression(QString::fromLatin1(form),
                                        QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(expression.match(QString::fromLatin1(received)).hasMatch(), received.left(500).constData());
}

void TestSandboxFaults::takesItsTime()
{
    for (const char *fault : {R"({"delayMs": 100})", R"({"dripMs": 10, "body": "01234567890"})",
                              R"({"dripMs": 2, "dripHeaders": true, "body": ""})"}) {
        m_service.reset(fault);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(pingStatus(), 200);
        QVERIFY2(timer.elapsed() >= 100, fault);
    }
}

void TestSandboxFaults::neverBuffersAnEndlessAnswer()
{
    const auto residentBytes = [] {
        QFile file(u"/proc/self/statm"_s);
        return file.open(QIODevice::ReadOnly)
            ? file.readAll().split(' ').value(1).toLongLong() * ::getpagesize()
            : 0;
    };
    m_service.reset(R"({"endless": true})"_ba);
    RawClient client(m_service.url());
    client.socket.setReadBufferSize(64 * 1024);
    client.send(post(pingPath, goodPing()));
    QVERIFY(waitUntil([&] { return client.socket.bytesAvailable() == 64 * 1024; }));
    const qint64 before = residentBytes();
    // The client stops reading; a service that does not care would go on filling memory meanwhile.
    QVERIFY(!waitUntil([&] { return residentBytes() - before > 16'000'000; }, 300ms));
    qint64 read = 0;
    QVERIFY(waitUntil([&] { return (read += client.socket.readAll().size()) > 30'000'000; }));
    QVERIFY(!client.hasEnded());
}

void TestSandboxFaults::answersBeforeTheBody()
{
    m_service.reset(R"({"when": "head", "status": 503, "body": "early"})"_ba);
    RawClient client(m_service.url());
    const QByteArray ping = post(pingPath, goodPing());
    const qsizetype bodyAt = ping.indexOf("\r\n\r\n") + 4;
    QCOMPARE(client.exchange(ping.left(bodyAt)).body, "early"_ba);
    QCOMPARE(client.exchange(ping.mid(bodyAt) + ping).status, 200);
}

void TestSandboxFaults::leavesTheBodyUnread()
{
    m_service.reset(R"({"path": "/storage/", "stopReading": true})"_ba);
    RawClient client(m_service.url());
    client.send(request("PUT"_ba, "/storage/x"_ba, QByteArray(60'000'000, 'v')));
    QVERIFY(
        !waitUntil([&] { return client.socket.bytesToWrite() < 10'000'000 || client.hasEnded(); }, 300ms));
    QCOMPARE(client.socket.bytesAvailable(), 0);
}

void TestSandboxFaults::storesTheReportBeforeItMisbehaves()
{
    m_service.reset(R"([{"handle": true, "cut": "beforeHeaders"}, {"status": 500}])"_ba);
    for (const int status : {0, 500}) {
        QCOMPARE(ask(m_service.url(), post(reportPath, goodReport())).status, status);
        QCOMPARE(m_service.sandbox().reports().size(), 1);
    }
}

void TestSandboxFaults::playsTheFirstFaultThatIsDue()
{
    m_service.reset(R"([{"path": "/v1/sdk/reports", "status": 500}, {"method": "PUT", "status": 504},
                        {"path": "/v1/sdk/devices", "skip": 2, "times": 2, "status": 501}, {"status": 502}])");
    for (const int status : {502, 200, 501, 501, 200})
        QCOMPARE(pingStatus(), status);
    QCOMPARE(ask(m_service.url(), request("PUT"_ba, "/storage/x"_ba)).status, 504);
}

void TestSandboxFaults::refusesWhatIsNoFault_data()
{
    QTest::addColumn<QString>("named");
    QTest::newRow(R"({"satus": 500})") << u"satus is not a known key"_s;
    QTest::newRow(R"({"status": 99})") << u"status must be from"_s;
    QTest::newRow(R"({"padding": 3, "endless": true})") << u"padding goes into a JSON object"_s;
    QTest::newRow(R"({"cut": "inTheMiddle"})") << u"cut must be one of beforeHeaders"_s;
    QTest::newRow(R"({"cut": "inBody", "stall": "inBody"})") << u"exclude each other"_s;
    QTest::newRow(R"({"handle": true, "when": "head"})") << u"handle needs"_s;
    QTest::newRow(R"({"headers": {"A": "b\r\nC: d"}})") << u"headers must hold"_s;
    QTest::newRow(R"({"path": "v1"})") << u"path must begin"_s;
    QTest::newRow(R"([{"status": 500}, 7])") << u"an object is expected"_s;
    QTest::newRow(R"({"status":)") << u"Not JSON"_s;
}

void TestSandboxFaults::refusesWhatIsNoFault()
{
    QFETCH(QString, named);
    QString error;
    QVERIFY(!m_service.sandbox().addFault(QByteArray(QTest::currentDataTag()), &error));
    QVERIFY2(error.contains(named), qPrintable(error));
    QCOMPARE(pingStatus(), 200); // nor is a part of it kept
}

QTEST_GUILESS_MAIN(TestSandboxFaults)
#include "tst_sandbox_faults.moc"
