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
    void tellsTheFormOfAMissingNetwork();
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
    QTest::newRow("message") << R"({"message": " Invalid category \n"})"_ba << u"Invalid category"_s;
    QTest::newRow("message before error") << R"({"message": "a", "error": "b"})"_ba << u"a"_s;
    QTest::newRow("blank message") << R"({"message": " ", "error": "quota exceeded"})"_ba
                                   << u"quota exceeded"_s;
    QTest::newRow("messages") << R"({"message": [" a ", "", "b"]})"_ba << u"a, b"_s;
    QTest::newRow("blank messages, error") << R"({"message": ["", " "], "error": "e"})"_ba << u"e"_s;
    QTest::newRow("mixed messages") << R"({"message": ["a", 1], "error": "e"})"_ba << u"e"_s;
    QTest::newRow("error of another type") << R"({"error": {"message": "m"}})"_ba << u""_s;
    QTest::newRow("array") << " [\"a\"] "_ba << u"[\"a\"]"_s;
    QTest::newRow("no JSON") << "\xc3\x9c"
                                "berlast\r\n"_ba
                             << u"Überlast"_s;
    QTest::newRow("no UTF-8") << "\xff\xfe"_ba << u""_s;
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
    QTest::newRow("199") << 199 << ""_ba << u"https://h/x"_s << u"Op failed with status 199 (host=h)"_s;
    QTest::newRow("300") << 300 << ""_ba << u"https://h/x"_s << u"Op failed with status 300 (host=h)"_s;
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

// Of the other failures, whose texts the fault run knows to the letter, none needs a network that is down.
void TestResponseRules::tellsTheFormOfAMissingNetwork()
{
    const auto error = networkError(u"Report submit"_s, QUrl(u"https://h/x"_s),
                                    UrlError(UrlErrorCode::NotConnectedToInternet));
    QCOMPARE(error.code(), -1009);
    const auto text = error.localizedDescription();
    QVERIFY2(text.startsWith("Report submit network error (host=h): Could not connect"_L1), qPrintable(text));
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
}

void TestResponseRules::refusesHeaderFieldsThatWouldBreakTheirLine_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("isWellFormed");

    const auto row = [](const char *name, const char *field, const QByteArray &value, bool isWellFormed) {
        QTest::newRow(name) << QByteArray(field) << value << isWellFormed;
    };
    row("plain", "x-amz-acl", "private\tkey \xc3\xa4", true);
    row("NUL in the value", "x", QByteArray("a\0b", 3), false);
    row("DEL in the value", "x", "\x7f", false);
    row("colon in the name", "x:", "a", false);
    row("blank in the name", "x y", "a", false);
    row("empty name", "", "a", false);
    row("name beyond ASCII", "\xc3\xa4", "a", false);
}

void TestResponseRules::refusesHeaderFieldsThatWouldBreakTheirLine()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, value);
    QTEST(HttpHeaders::isWellFormed(name, value), "isWellFormed");
}

QTEST_GUILESS_MAIN(TestResponseRules)
#include "tst_response_rules.moc"
