#include "client/feedback_category.h"
#include "client/report_client_error.h"
#include "client/report_upload_attachment.h"
#include "client/response_rules.h"
#include "platform/http_message.h"
#include "platform/url_error.h"

#include <QTest>
#include <QUrl>

using namespace zenvor;
using namespace Qt::StringLiterals;

class TestResponseRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTheDetailOfAnErrorBody_data();
    void findsTheDetailOfAnErrorBody();
    void describesAStatusFailure_data();
    void describesAStatusFailure();
    void describesATransportFailureSoThatTheFormKnowsIt_data();
    void describesATransportFailureSoThatTheFormKnowsIt();
    void decidesWhetherAnUploadIsTriedAgain_data();
    void decidesWhetherAnUploadIsTriedAgain();
    void labelsAttachmentsAsTheServiceKnowsThem_data();
    void labelsAttachmentsAsTheServiceKnowsThem();
    void knowsTheWordsOfTheService();
    void refusesHeaderFieldsThatWouldBreakTheirLine_data();
    void refusesHeaderFieldsThatWouldBreakTheirLine();
};

void TestResponseRules::findsTheDetailOfAnErrorBody_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("detail"); // empty: none

    QTest::newRow("nothing") << ""_ba << u""_s;
    QTest::newRow("blanks") << " \n\t"_ba << u""_s;
    QTest::newRow("message") << R"({"message": " Invalid category \n"})"_ba << u"Invalid category"_s;
    QTest::newRow("message before error") << R"({"message": "a", "error": "b"})"_ba << u"a"_s;
    QTest::newRow("blank message") << R"({"message": " ", "error": "quota exceeded"})"_ba
                                   << u"quota exceeded"_s;
    QTest::newRow("messages") << R"({"message": [" a ", "", "b"]})"_ba << u"a, b"_s;
    QTest::newRow("blank messages") << R"({"message": ["", " "]})"_ba << u""_s;
    QTest::newRow("blank messages, error") << R"({"message": ["", " "], "error": "e"})"_ba << u"e"_s;
    QTest::newRow("mixed messages") << R"({"message": ["a", 1], "error": "e"})"_ba << u"e"_s;
    QTest::newRow("number as message") << R"({"message": 7, "error": "e"})"_ba << u"e"_s;
    QTest::newRow("error of another type") << R"({"error": {"message": "m"}})"_ba << u""_s;
    QTest::newRow("object without either") << R"({"code": "x"})"_ba << u""_s;
    QTest::newRow("array") << " [\"a\"] "_ba << u"[\"a\"]"_s;
    QTest::newRow("bare string") << "\"down\""_ba << u"\"down\""_s;
    QTest::newRow("no JSON") << "\xc3\x9c"
                                "berlast\r\n"_ba
                             << u"Überlast"_s;
    QTest::newRow("no UTF-8") << "\xff\xfe"_ba << u""_s;
    QTest::newRow("cut UTF-8") << "x\xc3"_ba << u""_s;
    QTest::newRow("Unicode blanks") << "\xe2\x80\x83x\xc2\xa0"_ba << u"x"_s;
}

void TestResponseRules::findsTheDetailOfAnErrorBody()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, detail);
    const auto found = parseServerErrorDetail(body);
    QCOMPARE(found.has_value(), !detail.isEmpty());
    QCOMPARE(found.value_or(QString()), detail);
}

void TestResponseRules::describesAStatusFailure_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("description"); // empty: success

    QTest::newRow("200") << 200 << "nonsense"_ba << u"https://h/x"_s << u""_s;
    QTest::newRow("299") << 299 << ""_ba << u"https://h/x"_s << u""_s;
    QTest::newRow("199") << 199 << ""_ba << u"https://h/x"_s << u"Op failed with status 199 (host=h)"_s;
    QTest::newRow("300") << 300 << ""_ba << u"https://h/x"_s << u"Op failed with status 300 (host=h)"_s;
    QTest::newRow("422") << 422 << R"({"message":"Invalid category"})"_ba << u"https://h:8443/x?secret"_s
                         << u"Op failed with status 422 (host=h): Invalid category"_s;
    QTest::newRow("no host") << 500 << ""_ba << u"/x"_s << u"Op failed with status 500 (host=unknown)"_s;
}

void TestResponseRules::describesAStatusFailure()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, url);
    QFETCH(QString, description);
    HttpRequest request;
    request.url = QUrl(url);
    HttpResponse response;
    response.status = status;
    response.body = body;
    QString thrown;
    int code = status;
    try {
        ensureSuccess(u"Op"_s, request, response);
    } catch (const ServiceError &error) {
        thrown = error.localizedDescription();
        code = error.code();
    }
    QCOMPARE(thrown, description);
    QCOMPARE(code, status);
}

void TestResponseRules::describesATransportFailureSoThatTheFormKnowsIt_data()
{
    QTest::addColumn<UrlErrorCode>("code");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("message"); // which message the form shows; empty: the text itself

    QTest::newRow("name") << UrlErrorCode::CannotFindHost << -1003 << u"network"_s;
    QTest::newRow("refused") << UrlErrorCode::CannotConnectToHost << -1004 << u"network"_s;
    QTest::newRow("lost") << UrlErrorCode::NetworkConnectionLost << -1005 << u"network"_s;
    QTest::newRow("offline") << UrlErrorCode::NotConnectedToInternet << -1009 << u"network"_s;
    QTest::newRow("time-out") << UrlErrorCode::TimedOut << -1001 << u"time-out"_s;
    QTest::newRow("TLS") << UrlErrorCode::SecureConnectionFailed << -1200 << u""_s;
    QTest::newRow("certificate") << UrlErrorCode::ServerCertificateUntrusted << -1202 << u""_s;
    QTest::newRow("cancelled") << UrlErrorCode::Cancelled << -999 << u""_s;
}

void TestResponseRules::describesATransportFailureSoThatTheFormKnowsIt()
{
    QFETCH(UrlErrorCode, code);
    QFETCH(int, number);
    QFETCH(QString, message);
    const auto error = networkError(u"Report submit"_s, QUrl(u"https://h/x"_s), UrlError(code));
    QCOMPARE(error.code(), number);
    const auto text = error.localizedDescription().toLower();
    QVERIFY2(text.startsWith("report submit network error (host=h): "_L1), qPrintable(text));
    const bool isNetwork =
        text.contains("unable to resolve host"_L1) || text.contains("could not connect"_L1);
    const bool isTimeout = text.contains("timed out"_L1) || text.contains("timeout"_L1);
    QCOMPARE(isNetwork, message == "network"_L1);
    QCOMPARE(isTimeout, message == "time-out"_L1);
}

void TestResponseRules::decidesWhetherAnUploadIsTriedAgain_data()
{
    using Kind = ReportClientError::Kind;
    QTest::addColumn<std::shared_ptr<std::exception>>("error");
    QTest::addColumn<bool>("isTriedAgain");

    const auto row = [](const char *name, auto error, bool isTriedAgain) {
        QTest::newRow(name) << std::shared_ptr<std::exception>(std::make_shared<decltype(error)>(error))
                            << isTriedAgain;
    };
    row("service error 404", ServiceError(404, {}), true);
    row("time-out", ServiceError(-1001, {}), true);
    row("unknown exception", std::runtime_error("x"), true);
    row("invalid token", ReportClientError(Kind::InvalidToken), false);
    row("unreadable init answer", ReportClientError(Kind::InvalidUploadInitPayload), true);
    for (const int status : {399, 408, 429, 500})
        row(qPrintable(QString::number(status)), ReportClientError::unexpectedStatusCode(status), true);
    for (const int status : {400, 401, 404, 499})
        row(qPrintable(QString::number(status)), ReportClientError::unexpectedStatusCode(status), false);
}

void TestResponseRules::decidesWhetherAnUploadIsTriedAgain()
{
    QFETCH(std::shared_ptr<std::exception>, error);
    QFETCH(bool, isTriedAgain);
    QCOMPARE(shouldRetryUpload(*error, 1), isTriedAgain);
    QCOMPARE(shouldRetryUpload(*error, 2), isTriedAgain);
    QCOMPARE(shouldRetryUpload(*error, 3), false);
}

void TestResponseRules::labelsAttachmentsAsTheServiceKnowsThem_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QString>("sentKind");
    QTest::addColumn<QString>("sentMimeType");

    const auto screenshot = u"screenshot"_s;
    const auto video = u"video"_s;
    QTest::newRow("png") << screenshot << u" IMAGE/PNG\n"_s << screenshot << u"image/png"_s;
    QTest::newRow("heic") << screenshot << u"image/heic"_s << screenshot << u"image/jpeg"_s;
    QTest::newRow("nothing") << u""_s << u""_s << screenshot << u"image/jpeg"_s;
    QTest::newRow("webp photo") << u"photo"_s << u"image/webp"_s << screenshot << u"image/webp"_s;
    QTest::newRow("unknown video") << u"VIDEO "_s << u"video/x-matroska"_s << video << u"video/mp4"_s;
    QTest::newRow("video as image") << video << u"image/png"_s << video << u"video/mp4"_s;
    QTest::newRow("movie as photo") << u"photo"_s << u"Video/QuickTime"_s << video << u"video/quicktime"_s;
    QTest::newRow("webm as screenshot") << screenshot << u"video/webm"_s << video << u"video/webm"_s;
}

void TestResponseRules::labelsAttachmentsAsTheServiceKnowsThem()
{
    QFETCH(QString, kind);
    QFETCH(QString, mimeType);
    const auto labels = normalizeAttachment({.data = {}, .mimeType = mimeType, .kind = kind});
    QTEST(labels.kind, "sentKind");
    QTEST(labels.mimeType, "sentMimeType");
}

void TestResponseRules::knowsTheWordsOfTheService()
{
    QStringList words;
    for (const auto category : {FeedbackCategory::Improvement, FeedbackCategory::Bug})
        words.append(wireValue(category));
    using Frequency = BugOccurrenceFrequency;
    for (const auto frequency : {Frequency::FirstTime, Frequency::FewTimes, Frequency::SeveralTimes,
                                 Frequency::ManyTimes, Frequency::AlmostEveryTime})
        words.append(wireValue(frequency));
    QCOMPARE(words.join(u' '),
             u"feedback bug first_time few_times several_times many_times almost_every_time"_s);

    words.clear();
    for (const auto &extension : {u"JPG"_s, u"jpeg"_s, u"png"_s, u"WebP"_s, u"mp4"_s, u"MOV"_s, u"webm"_s}) {
        const auto mimeType = attachmentMimeType(extension).value();
        words.append(attachmentKind(mimeType).left(1) + u':' + mimeType);
    }
    QCOMPARE(words.join(u' '),
             u"s:image/jpeg s:image/jpeg s:image/png s:image/webp v:video/mp4 "
             "v:video/quicktime v:video/webm"_s);
    for (const auto &extension : {u""_s, u"gif"_s, u"m4v"_s, u".png"_s})
        QVERIFY(!attachmentMimeType(extension));
}

void TestResponseRules::refusesHeaderFieldsThatWouldBreakTheirLine_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("isWellFormed");

    QTest::newRow("plain") << "x-amz-acl"_ba
                           << "private\tkey \xc3\xa4"_ba << true;
    QTest::newRow("empty value") << "x"_ba
                                 << ""_ba << true;
    QTest::newRow("CR LF in the value") << "x"_ba
                                        << "a\r\nHost: evil"_ba << false;
    QTest::newRow("LF in the value") << "x"_ba
                                     << "a\nb"_ba << false;
    QTest::newRow("NUL in the value") << "x"_ba << QByteArray("a\0b", 3) << false;
    QTest::newRow("DEL in the value") << "x"_ba
                                      << "\x7f"_ba << false;
    QTest::newRow("CR LF in the name") << "x\r\nHost"_ba
                                       << "a"_ba << false;
    QTest::newRow("colon in the name") << "x:"_ba
                                       << "a"_ba << false;
    QTest::newRow("blank in the name") << "x y"_ba
                                       << "a"_ba << false;
    QTest::newRow("empty name") << ""_ba
                                << "a"_ba << false;
    QTest::newRow("name beyond ASCII") << "\xc3\xa4"_ba
                                       << "a"_ba << false;
}

void TestResponseRules::refusesHeaderFieldsThatWouldBreakTheirLine()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, value);
    QTEST(HttpHeaders::isWellFormed(name, value), "isWellFormed");
}

QTEST_GUILESS_MAIN(TestResponseRules)
#include "tst_response_rules.moc"
