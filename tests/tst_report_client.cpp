#include "client/report_client.h"
#include "client/report_client_error.h"
#include "support/await.h"
#include "support/fast_clock.h"
#include "support/report.h"
#include "support/session.h"
#include "support/test_service.h"

#include <zenvor/report_service.h>

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::TestService;

/// The client against the sandbox, over real sockets: what reaches the service, and what the caller gets.
class TestReportClient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void deliversAReportWithItsAttachments();
    void asksForNothingButTheReportWithoutAttachments();
    void considersTheFirstFiveAttachmentsOnly();
    void dropsAnAttachmentAfterThreeTries_data();
    void dropsAnAttachmentAfterThreeTries();
    void sendsNothingToAUrlThatEndsInHalfACharacter();
    void startsAnUploadOverFromItsReservation();
    void pausesLongerBeforeEachTry();
    void readsUploadIdsAsTheyAreAndListsThemTrimmedOnce();
    void keepsTheScreenshotOfTheCaller();
    void sendsTheRequiredHeadersAndNothingThatCouldInject();
    void reportsWhatTheServiceSays_data();
    void reportsWhatTheServiceSays();
    void sendsTheReportOnce();
    void validatesTheToken_data();
    void validatesTheToken();
    void pingsWithTrimmedIdentifiers();
    void sendsNoPingWithoutIdentifiers();
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

void TestReportClient::initTestCase()
{
    QVERIFY(setReportServiceUrl(m_service.url()));
}

void TestReportClient::init()
{
    m_service.reset();
}

void TestReportClient::deliversAReportWithItsAttachments()
{
    const auto big = QByteArray("\x89PNG") + QByteArray(3000000, 'x');
    QCOMPARE(failure(m_client.submit(test::report(), {mp4(), png(big)})), QString());
    QCOMPARE(m_service.requestLines().filter(u"/v1/"_s),
             (QStringList{u"POST /v1/sdk/uploads/init"_s, u"POST /v1/sdk/uploads/complete"_s,
                          u"POST /v1/sdk/uploads/init"_s, u"POST /v1/sdk/uploads/complete"_s,
                          u"POST /v1/sdk/reports"_s}));
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
    QCOMPARE(store.size(), 1);
    const auto files = store.newest().attachments;
    QCOMPARE(files.size(), 2);
    QFile file(store.path(store.newest().id) + u'/' + files.at(1).fileName);
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

void TestReportClient::dropsAnAttachmentAfterThreeTries_data()
{
    QTest::addColumn<QByteArray>("fault");

    const auto init = [](const char *body) {
        return R"({"path":"/v1/sdk/uploads/init","times":3,"status":200,"body":%1})"_ba.replace(
            "%1",
            QJsonDocument(QJsonArray{QString::fromUtf8(body)})
                .toJson(QJsonDocument::Compact)
                .mid(1)
                .chopped(1));
    };
    QTest::newRow("status") << R"({"path":"/v1/sdk/uploads/init","times":3,"status":404})"_ba;
    QTest::newRow("401") << R"({"path":"/v1/sdk/uploads/init","times":3,"status":401})"_ba;
    QTest::newRow("not ok") << init(R"({"ok":false,"upload_id":"u","upload_url":"http://127.0.0.1:1/x"})");
    QTest::newRow("ok a number") << init(R"({"ok":1,"upload_id":"u","upload_url":"http://127.0.0.1:1/x"})");
    QTest::newRow("blank id") << init(R"({"ok":true,"upload_id":" \n","upload_url":"http://127.0.0.1:1/x"})");
    QTest::newRow("no URL") << init(R"({"ok":true,"upload_id":"u","upload_url":"not a url"})");
    QTest::newRow("a file") << init(R"({"ok":true,"upload_id":"u","upload_url":"file:///tmp/zenvor-never"})");
    QTest::newRow("no JSON") << init("<html>");
    QTest::newRow("storage refuses") << R"({"path":"/storage/","times":3,"status":403})"_ba;
    QTest::newRow("storage is cut")
        << R"({"path":"/storage/","times":0,"reset":"beforeHeaders","when":"head"})"_ba;
    QTest::newRow("not completed")
        << R"({"path":"/v1/sdk/uploads/complete","times":3,"body":"{\"ok\":false}"})"_ba;
}

void TestReportClient::dropsAnAttachmentAfterThreeTries()
{
    QFETCH(QByteArray, fault);
    m_service.reset(fault);
    QCOMPARE(failure(m_client.submit(test::report(), {png()})), QString());
    QCOMPARE(m_service.requestLines().count(u"POST /v1/sdk/uploads/init"_s), 3);
    QCOMPARE(m_service.requestLines().count(u"POST /v1/sdk/reports"_s), 1);
    QVERIFY(!sentReport().contains("attachment_upload_ids"_L1));
    QVERIFY(!sentReport().contains("screenshot_upload_id"_L1));
    QVERIFY(!QFile::exists(u"/tmp/zenvor-never"_s));
}

void TestReportClient::sendsNothingToAUrlThatEndsInHalfACharacter()
{
    // As UTF-8 the half becomes a question mark, with which the query of a URL begins.
    m_service.reset(R"({"path":"/v1/sdk/uploads/init","times":3,
                        "body":"{\"ok\":true,\"upload_id\":\"u\",\"upload_url\":\"%1\\ud83d\"}"})"_ba.replace(
        "%1", m_service.url(u"/storage/x"_s).toEncoded()));
    QCOMPARE(failure(m_client.submit(test::report(), {png()})), QString());
    QCOMPARE(m_service.requestLines().filter(u"PUT "_s), QStringList());
}

void TestReportClient::startsAnUploadOverFromItsReservation()
{
    m_service.reset(
        R"([{"path":"/v1/sdk/uploads/complete","status":500},{"path":"/storage/","skip":1,"status":500}])");
    QCOMPARE(failure(m_client.submit(test::report(), {png()})), QString());
    QCOMPARE(m_service.requestLines().count(u"POST /v1/sdk/uploads/init"_s), 3);
    QCOMPARE(m_service.requestLines().count(u"POST /v1/sdk/uploads/complete"_s), 2);
    const auto ids = sentReport().value("attachment_upload_ids"_L1).toArray();
    QCOMPARE(ids.size(), 1);
    const auto lastConfirmed = QJsonDocument::fromJson(m_service.requests().at(7).body).object();
    QCOMPARE(ids.first(), lastConfirmed.value("upload_id"_L1));
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
    const auto answer = QJsonDocument(QJsonObject{
        {u"ok"_s, true},
        {u"upload_id"_s, u"u"_s},
        {u"upload_url"_s, m_service.url(u"/storage/x?sig=a%2Fb%3D"_s).toString(QUrl::FullyEncoded)},
        {u"required_headers"_s,
         QJsonObject{{u"content-type"_s, u"image/x-own"_s},
                     {u"X-Acl"_s, u"private"_s},
                     {u"X-Empty"_s, u""_s},
                     {u"X-Evil"_s, u"a\r\nX-Injected: 1"_s},
                     {u"X-Bad\r\nX-Injected"_s, u"1"_s},
                     {u"Content-Length"_s, u"1"_s},
                     {u"Transfer-Encoding"_s, u"chunked"_s}}}});
    m_service.reset(
        QJsonDocument(
            QJsonArray{
                QJsonObject{{u"path"_s, u"/v1/sdk/uploads/init"_s},
                            {u"body"_s, QString::fromUtf8(answer.toJson(QJsonDocument::Compact))}},
                QJsonObject{{u"path"_s, u"/storage/"_s}, {u"status"_s, 200}},
                QJsonObject{{u"path"_s, u"/v1/sdk/uploads/complete"_s}, {u"body"_s, u"{\"ok\":true}"_s}},
                QJsonObject{{u"path"_s, u"/v1/sdk/reports"_s}, {u"status"_s, 200}}})
            .toJson());
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

void TestReportClient::reportsWhatTheServiceSays_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("description");

    QTest::newRow("422") << R"({"status":422,"body":"{\"message\":\"Invalid category\"}"})"_ba
                         << u"Report submit failed with status 422 (host=127.0.0.1): Invalid category"_s;
    QTest::newRow("empty 500") << R"({"status":500,"body":""})"_ba
                               << u"Report submit failed with status 500 (host=127.0.0.1)"_s;
    QTest::newRow("401") << R"({"status":401,"body":"no"})"_ba
                         << u"Report submit failed with status 401 (host=127.0.0.1): no"_s;
    QTest::newRow("204") << R"({"status":204})"_ba << QString();
    QTest::newRow("2xx that is no JSON") << R"({"status":200,"body":"<html>"})"_ba << QString();
    QTest::newRow("lost") << R"({"cut":"beforeHeaders"})"_ba
                          << u"Report submit network error (host=127.0.0.1): "
                             "Could not connect: the network connection was lost."_s;
}

void TestReportClient::reportsWhatTheServiceSays()
{
    QFETCH(QByteArray, fault);
    m_service.reset(fault);
    QTEST(failure(m_client.submit(test::report(), {})), "description");
}

void TestReportClient::sendsTheReportOnce()
{
    // The validation leaves a pooled connection behind; the report must not go out on it, nor twice.
    m_service.reset(R"([{"path":"/v1/sdk/reports","cut":"beforeHeaders","handle":true,"times":0}])");
    test::await(m_client.validateToken(TestService::bundleId()));
    QVERIFY(!failure(m_client.submit(test::report(), {png()})).isEmpty());
    QCOMPARE(m_service.requestLines().count(u"POST /v1/sdk/reports"_s), 1);
}

void TestReportClient::validatesTheToken_data()
{
    QTest::addColumn<QString>("bundleId");
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("outcome"); // "matched", "mismatch" or the description of the error

    const auto own = TestService::bundleId();
    QTest::newRow("own app") << own << QByteArray() << u"matched"_s;
    QTest::newRow("other app") << u"com.example.other"_s << QByteArray() << u"mismatch"_s;
    QTest::newRow("not trimmed") << u" %1 "_s.arg(own) << QByteArray() << u"mismatch"_s;
    QTest::newRow("ok false") << own << R"({"body":"{\"ok\":false,\"match\":true}"})"_ba << u"matched"_s;
    const auto unreadable = u"Could not parse token validation response."_s;
    QTest::newRow("match missing") << own << R"({"body":"{\"ok\":true}"})"_ba << unreadable;
    QTest::newRow("match a number") << own << R"({"body":"{\"ok\":true,\"match\":1}"})"_ba << unreadable;
    QTest::newRow("endless") << own << R"({"endless":true})"_ba << unreadable;
    QTest::newRow("401") << own << R"({"status":401,"body":"{\"message\":\"x\"}"})"_ba
                         << u"SDK token is invalid or revoked."_s;
    QTest::newRow("403") << own << R"({"status":403,"body":"{\"error\":\"x\"}"})"_ba
                         << u"Token validate failed with status 403 (host=127.0.0.1): x"_s;
    QTest::newRow("endless 500") << own << R"({"status":500,"endless":true})"_ba
                                 << u"Token validate failed with status 500 (host=127.0.0.1)"_s;
}

void TestReportClient::validatesTheToken()
{
    QFETCH(QString, bundleId);
    QFETCH(QByteArray, fault);
    m_service.reset(fault);
    QString outcome;
    try {
        const auto result = test::await(m_client.validateToken(bundleId));
        outcome = result == TokenBundleValidationResult::Matched ? u"matched"_s : u"mismatch"_s;
    } catch (const Error &error) {
        outcome = error.localizedDescription();
    }
    QTEST(outcome, "outcome");
}

void TestReportClient::pingsWithTrimmedIdentifiers()
{
    QCOMPARE(failure(m_client.pingDevice(u" %1\n"_s.arg(TestService::bundleId()), u"\tDEVICE "_s)),
             QString());
    const auto ping = QJsonDocument::fromJson(m_service.requests().at(0).body).object();
    const QJsonObject expected{{u"token"_s, TestService::token()},
                               {u"bundle_id"_s, TestService::bundleId()},
                               {u"platform"_s, u"ios"_s},
                               {u"device_id"_s, u"DEVICE"_s}};
    QCOMPARE(ping, expected);

    m_service.reset(R"([{"status":200,"body":"<html>"},{"status":401},{"status":404}])");
    const auto failureOfPing = [this] {
        return failure(m_client.pingDevice(u"b"_s, u"d"_s));
    };
    QCOMPARE(failureOfPing(), QString());
    QCOMPARE(failureOfPing(), u"SDK token is invalid or revoked."_s);
    QCOMPARE(failureOfPing(), u"Device ping failed with status 404 (host=127.0.0.1)"_s);
}

void TestReportClient::sendsNoPingWithoutIdentifiers()
{
    QCOMPARE(failure(m_client.pingDevice(u" \n"_s, u"d"_s)), QString());
    QCOMPARE(failure(m_client.pingDevice(u"b"_s, QString())), QString());
    QVERIFY(m_service.requests().isEmpty());
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
