#include "client/report_client.h"
#include "client/report_client_error.h"
#include "support/await.h"
#include "support/fast_clock.h"
#include "support/report.h"
#include "support/session.h"
#include "support/test_service.h"

#include <zenvor/report_service.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::TestService;

/// What the client sends. The fault run shows what it makes of what goes wrong.
class TestReportClient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(setReportServiceUrl(m_service.url())); }
    void init() { m_service.reset(); }
    void deliversAReportWithItsAttachments();
    void asksForNothingButTheReportWithoutAttachments();
    void considersTheFirstFiveAttachmentsOnly();
    void dropsAnAttachmentThatIsReservedBadly_data();
    void dropsAnAttachmentThatIsReservedBadly();
    void pausesLongerBeforeEachTry();
    void readsUploadIdsAsTheyAreAndListsThemTrimmedOnce();
    void keepsTheScreenshotOfTheCaller();
    void sendsTheRequiredHeadersAndNothingThatCouldInject();
    void sendsTheReportOverAConnectionOfItsOwn();
    void validatesTheTokenForTheAppAsItIsNamed();
    void pingsWithTrimmedIdentifiersOrNotAtAll();
    void endsTheRequestUnderWayWhenStopped();
    void outlivesTheClientObject();

private:
    static ReportUploadAttachment png(const QByteArray &bytes = "\x89PNG bytes"_ba)
    {
        return {.data = bytes, .mimeType = u"image/png"_s, .kind = u"screenshot"_s};
    }
    static ReportUploadAttachment mp4() { return {"....ftypisom"_ba, u"video/mp4"_s, u"video"_s}; }
    /// The description of the failure, or nothing.
    template<typename T>
    static QString failure(Task<T> task);
    QJsonObject sentReport() const;

    TestService m_service;
    const test::FastClock m_clock{30};
    test::TestedSession m_session{Clock::system()};
    ReportClient m_client{ZenvorConfiguration(TestService::token(), false), m_session, m_clock};
};

template<typename T>
QString TestReportClient::failure(Task<T> task)
{
    try {
        test::await(std::move(task));
    } catch (const std::exception &error) {
        return localizedDescription(error);
    }
    return {};
}

QJsonObject TestReportClient::sentReport() const
{
    for (const auto &request : m_service.requests()) {
        if (request.target == "/v1/sdk/reports")
            return QJsonDocument::fromJson(request.body).object();
    }
    return {};
}

void TestReportClient::deliversAReportWithItsAttachments()
{
    const auto big = QByteArray("\x89PNG") + QByteArray(3000000, 'x');
    QCOMPARE(failure(m_client.submit(test::report(), {mp4(), png(big)})), QString());
    for (const auto &request : m_service.requests()) {
        QVERIFY2(request.deviations.isEmpty(), qPrintable(request.deviations.join(u'\n')));
        if (request.method == "POST")
            QCOMPARE(sandbox::headerValues(request.headers, "Content-Type"_ba), QList{"application/json"_ba});
    }
    const auto report = sentReport();
    const auto ids = report.value("attachment_upload_ids"_L1).toArray();
    QCOMPARE(ids.size(), 2);
    QCOMPARE(report.value("screenshot_upload_id"_L1), ids.at(1)); // the first image, not the first file

    const auto &store = m_service.sandbox().reports();
    QFile file(store.path(store.newest().id) + u'/' + store.newest().attachments.at(1).fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), big);
}

void TestReportClient::asksForNothingButTheReportWithoutAttachments()
{
    QCOMPARE(failure(m_client.submit(test::report(), {})), QString());
    QCOMPARE(m_service.requestLines(), QStringList{u"POST /v1/sdk/reports"_s});
    QVERIFY(!sentReport().contains("attachment_upload_ids"_L1));
    QVERIFY(!sentReport().contains("screenshot_upload_id"_L1));
}

void TestReportClient::considersTheFirstFiveAttachmentsOnly()
{
    // The empty one uses one of the five places.
    QCOMPARE(failure(m_client.submit(test::report(), {png(), png(""_ba), png(), mp4(), png(), png(), png()})),
             QString());
    QCOMPARE(m_service.requestLines().count(u"POST /v1/sdk/uploads/init"_s), 4);
    QCOMPARE(sentReport().value("attachment_upload_ids"_L1).toArray().size(), 4);
}

void TestReportClient::dropsAnAttachmentThatIsReservedBadly_data()
{
    QTest::addColumn<QByteArray>("ok");
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QByteArray>("url");
    const auto row = [](const char *name, const char *ok, const char *id, const QByteArray &url) {
        QTest::newRow(name) << QByteArray(ok) << QByteArray(id) << url;
    };

    const auto storage = m_service.url(u"/storage/x"_s).toEncoded();
    row("not ok", "false", "u", storage);
    row("blank id", "true", R"( \n)", storage);
    row("no URL", "true", "u", "not a url");
    row("a file", "true", "u", "file:///tmp/zenvor-never");
    // As UTF-8 the half becomes a question mark, with which the query of a URL begins.
    row("a URL that ends in half a character", "true", "u", storage + R"(\ud83d)");
}

void TestReportClient::dropsAnAttachmentThatIsReservedBadly()
{
    QFETCH(QByteArray, ok);
    QFETCH(QByteArray, id);
    QFETCH(QByteArray, url);
    const auto answer = R"({"ok":)" + ok + R"(,"upload_id":")" + id + R"(","upload_url":")" + url + R"("})";
    m_service.reset(
        R"({"path":"/v1/sdk/uploads/init","times":3,"bodyBase64":"%1"})"_ba.replace("%1", answer.toBase64()));
    QCOMPARE(failure(m_client.submit(test::report(), {png()})), QString());
    const auto init = u"POST /v1/sdk/uploads/init"_s;
    QCOMPARE(m_service.requestLines(), (QStringList{init, init, init, u"POST /v1/sdk/reports"_s}));
    QVERIFY(!QFile::exists(u"/tmp/zenvor-never"_s));
}

void TestReportClient::pausesLongerBeforeEachTry()
{
    struct RecordingClock final : Clock
    {
        std::chrono::milliseconds realDuration(std::chrono::milliseconds duration) const override
        {
            pauses.append(int(duration.count()));
            return {};
        }
        mutable QList<int> pauses;
    } clock;
    m_service.reset(R"({"path":"/v1/sdk/uploads/init","times":3,"status":500})");
    const ReportClient client(ZenvorConfiguration(TestService::token(), false), m_session, clock);
    QCOMPARE(failure(client.submit(test::report(), {png()})), QString());
    QCOMPARE(clock.pauses, (QList{300, 600}));
}

void TestReportClient::readsUploadIdsAsTheyAreAndListsThemTrimmedOnce()
{
    const auto answer = R"("{\"ok\":true,\"upload_id\":\" u\\n\",\"upload_url\":\"%1\"}")"_ba.replace(
        "%1", m_service.url(u"/storage/x"_s).toEncoded());
    m_service.reset(R"([{"path":"/v1/sdk/uploads/init","times":2,"body":%1},
                        {"path":"/storage/","times":2,"status":204},
                        {"path":"/v1/sdk/uploads/complete","times":2,"body":"{\"ok\":true}"},
                        {"path":"/v1/sdk/reports","status":201}])"_ba.replace("%1", answer));
    QCOMPARE(failure(m_client.submit(test::report(), {png(), mp4()})), QString());
    QCOMPARE(sentReport().value("attachment_upload_ids"_L1).toArray(), QJsonArray{u"u"_s});
    const auto confirmation = QJsonDocument::fromJson(m_service.requests().at(2).body).object();
    QCOMPARE(confirmation.value("upload_id"_L1).toString(), u" u\n"_s);
    QVERIFY(!confirmation.contains("etag"_L1)); // the storage gave none
}

void TestReportClient::keepsTheScreenshotOfTheCaller()
{
    m_service.reset(R"({"path":"/v1/sdk/reports","status":200})");
    auto changed = test::report();
    changed.screenshotUploadId = u"mine"_s;
    changed.attachmentUploadIds = QStringList{u"replaced"_s};
    QCOMPARE(failure(m_client.submit(changed, {png()})), QString());
    QCOMPARE(sentReport().value("screenshot_upload_id"_L1).toString(), u"mine"_s);
    QCOMPARE(sentReport().value("attachment_upload_ids"_L1).toArray().size(), 1);
    QVERIFY(sentReport().value("attachment_upload_ids"_L1).toArray().first() != u"replaced"_s);
}

void TestReportClient::sendsTheRequiredHeadersAndNothingThatCouldInject()
{
    const auto answer = R"({"ok":true, "upload_id":"u", "upload_url":"%1?sig=a%2Fb%3D", "required_headers":{
        "content-type":"image/x-own", "X-Acl":"private", "X-Empty":"", "X-Evil":"a\r\nX-Injected: 1",
        "X-Bad\r\nX-Injected":"1", "Content-Length":"1", "Transfer-Encoding":"chunked"}})"_ba.replace(
        "%1", m_service.url(u"/storage/x"_s).toEncoded());
    m_service.reset(R"([{"path":"/v1/sdk/uploads/init","bodyBase64":"%1"}, {"path":"/storage/","status":200},
                        {"path":"/v1/sdk/uploads/complete","body":"{\"ok\":true}"},
                        {"path":"/v1/sdk/reports","status":200}])"_ba.replace("%1", answer.toBase64()));
    QCOMPARE(failure(m_client.submit(test::report(), {png("12345"_ba)})), QString());
    const auto put = m_service.requests().at(1);
    QCOMPARE(put.target, "/storage/x?sig=a%2Fb%3D"_ba);
    QCOMPARE(put.body, "12345"_ba);
    const auto values = [&put](const char *name) {
        return sandbox::headerValues(put.headers, name);
    };
    QCOMPARE(values("Content-Type"), QList{"image/x-own"_ba});
    QCOMPARE(values("X-Acl"), QList{"private"_ba});
    QCOMPARE(values("X-Empty"), QList{""_ba});
    QCOMPARE(values("Content-Length"), QList{"5"_ba});
    for (const auto *name : {"X-Injected", "X-Evil", "Transfer-Encoding", "Authorization", "Expect"})
        QVERIFY2(values(name).isEmpty(), name);
}

void TestReportClient::sendsTheReportOverAConnectionOfItsOwn()
{
    // A pooled one may be lost under it, and nobody could tell whether the report has arrived.
    test::await(m_client.validateToken(TestService::bundleId()));
    QCOMPARE(failure(m_client.submit(test::report(), {})), QString());
    QVERIFY(m_service.requests().at(0).connection != m_service.requests().at(1).connection);
}

void TestReportClient::validatesTheTokenForTheAppAsItIsNamed()
{
    using Result = TokenBundleValidationResult;
    const auto own = TestService::bundleId();
    QCOMPARE(test::await(m_client.validateToken(own)), Result::Matched);
    QCOMPARE(test::await(m_client.validateToken(u"com.example.other"_s)), Result::BundleMismatch);
    QCOMPARE(test::await(m_client.validateToken(u" %1 "_s.arg(own))), Result::BundleMismatch);
}

void TestReportClient::pingsWithTrimmedIdentifiersOrNotAtAll()
{
    QCOMPARE(failure(m_client.pingDevice(u" \n"_s, u"d"_s)), QString());
    QCOMPARE(failure(m_client.pingDevice(u"b"_s, QString())), QString());
    QVERIFY(m_service.requests().isEmpty());

    m_service.reset(R"({"skip":1,"status":404})");
    QCOMPARE(failure(m_client.pingDevice(u" %1\n"_s.arg(TestService::bundleId()), u"\tDEVICE "_s)),
             QString());
    const auto ping = QJsonDocument::fromJson(m_service.requests().at(0).body).object();
    QCOMPARE(ping.value("bundle_id"_L1).toString(), TestService::bundleId());
    QCOMPARE(ping.value("device_id"_L1).toString(), u"DEVICE"_s);
    QCOMPARE(failure(m_client.pingDevice(u"b"_s, u"d"_s)),
             u"Device ping failed with status 404 (host=127.0.0.1)"_s);
}

void TestReportClient::endsTheRequestUnderWayWhenStopped()
{
    m_service.reset(R"({"path":"/v1/sdk/uploads/init","stall":"beforeHeaders"})");
    StopSource source;
    QObject scope;
    connect(&m_service.sandbox(), &sandbox::Sandbox::requestAnswered, &scope,
            [&source] { source.requestStop(); });
    QCOMPARE(failure(m_client.submit(test::report(), {png()}, source.token())),
             u"Report submit network error (host=127.0.0.1): cancelled"_s);
    QCOMPARE(m_service.requestLines(), QStringList{u"POST /v1/sdk/uploads/init"_s});
}

void TestReportClient::outlivesTheClientObject()
{
    m_service.reset(R"({"path":"/v1/sdk/validate","delayMs":50})");
    auto client =
        std::make_unique<ReportClient>(ZenvorConfiguration(TestService::token(), false), m_session, m_clock);
    auto submission = client->submit(test::report(), {png()});
    auto validation = client->validateToken(TestService::bundleId());
    client.reset();
    QCOMPARE(test::await(std::move(validation)), TokenBundleValidationResult::Matched);
    QCOMPARE(failure(std::move(submission)), QString());
}

QTEST_GUILESS_MAIN(TestReportClient)
#include "tst_report_client.moc"
