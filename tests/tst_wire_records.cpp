#include "client/feedback_report.h"
#include "client/wire_records.h"
#include "platform/json.h"

#include <QJsonDocument>
#include <QTest>
#include <QTimeZone>

#include <limits>

using namespace zenvor;
using namespace Qt::StringLiterals;

class TestWireRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesEveryFieldOfAReport();
    void leavesOutWhatIsAbsent();
    void replacesHalfASurrogatePair();
    void refusesANumberThatJsonCannotWrite();
    void writesSizesAsWholeNumbers();
    void readsAnswersStrictly_data();
    void readsAnswersStrictly();
    void sendsOnlyWhatTheUserAllowed_data();
    void sendsOnlyWhatTheUserAllowed();
    void stampsTheTimeInUtc();
};

namespace {

FeedbackReportPayload fullPayload()
{
    FeedbackReportPayload payload;
    payload.token = u"t"_s;
    payload.category = u"bug"_s;
    payload.message = u"a/b \"quoted\" ü 😀"_s;
    payload.occurrenceFrequency = u"few_times"_s;
    payload.steps = u"s"_s;
    payload.email = u"a@b.example"_s;
    payload.allowContact = true;
    payload.screenshotUploadId = u"u1"_s;
    payload.attachmentUploadIds = QStringList{u"u1"_s, u"u2"_s};
    payload.device = {.model = u"m"_s,
                      .machine = u"x86_64"_s,
                      .osName = u"os"_s,
                      .osVersion = u"12"_s,
                      .locale = u"en_US"_s,
                      .timeZone = u"Europe/Berlin"_s,
                      .screenWidth = 390,
                      .screenHeight = 844.5,
                      .interfaceStyle = u"dark"_s,
                      .identifierForVendor = u"ID"_s};
    payload.app = {.bundleId = u"com.example"_s, .version = u"1.2"_s, .build = u"7"_s};
    payload.occurredAt = u"2026-11-14T23:35:30Z"_s;
    return payload;
}

const auto fullJson = QByteArray(
    R"({"token":"t","category":"bug","message":"a/b \"quoted\" ü 😀","occurrence_frequency":"few_times",)"
    R"("steps":"s","email":"a@b.example","allow_contact":true,)"
    R"("screenshot_upload_id":"u1","attachment_upload_ids":["u1","u2"],)"
    R"("device":{"model":"m","machine":"x86_64","os_name":"os","os_version":"12","locale":"en_US",)"
    R"("time_zone":"Europe/Berlin","screen_width":390,"screen_height":844.5,)"
    R"("interface_style":"dark","identifier_for_vendor":"ID"},)"
    R"("app":{"bundle_id":"com.example","version":"1.2","build":"7"},)"
    R"("occurred_at":"2026-11-14T23:35:30Z"})");

QJsonObject parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object();
}

using Reads = bool (*)(const QByteArray &);

template<typename Record>
bool isReadable(const QByteArray &json)
{
    try {
        Record::fromJson(json);
    } catch (const JsonDecodingError &) {
        return false;
    }
    return true;
}

} // namespace

void TestWireRecords::writesEveryFieldOfAReport()
{
    QCOMPARE(parsed(toJson(fullPayload())), parsed(fullJson));
}

void TestWireRecords::leavesOutWhatIsAbsent()
{
    auto payload = fullPayload();
    payload.occurrenceFrequency.reset();
    payload.steps.reset();
    payload.email.reset();
    payload.screenshotUploadId.reset();
    payload.attachmentUploadIds.reset();
    payload.device.identifierForVendor.reset();
    auto expected = parsed(fullJson);
    for (const auto key : {"occurrence_frequency"_L1, "steps"_L1, "email"_L1, "screenshot_upload_id"_L1,
                           "attachment_upload_ids"_L1})
        expected.remove(key);
    auto device = expected.value("device"_L1).toObject();
    device.remove("identifier_for_vendor"_L1);
    expected.insert("device"_L1, device);
    QCOMPARE(parsed(toJson(payload)), expected);

    payload.app = {}; // a null text is a text
    const auto app = parsed(toJson(payload)).value("app"_L1).toObject();
    const auto emptyApp = parsed(R"({"bundle_id":"","version":"","build":""})"_ba);
    QCOMPARE(app, emptyApp);
}

void TestWireRecords::replacesHalfASurrogatePair()
{
    auto payload = fullPayload();
    payload.message = u"cut "_s + QChar(0xd83d);
    QCOMPARE(parsed(toJson(payload)).value("message"_L1).toString(), u"cut \ufffd"_s);
}

void TestWireRecords::refusesANumberThatJsonCannotWrite()
{
    auto payload = fullPayload();
    payload.device.screenWidth = std::numeric_limits<double>::infinity();
    QVERIFY_THROWS_EXCEPTION(JsonEncodingError, toJson(payload));
}

// What else the small requests hold the sandbox checks, wherever they are sent.
void TestWireRecords::writesSizesAsWholeNumbers()
{
    const InitUploadRequest init{.token = u"t"_s,
                                 .bundleId = u"b"_s,
                                 .kind = u"video"_s,
                                 .mimeType = u"video/mp4"_s,
                                 .bytes = 5000000000};
    QVERIFY2(init.toJson().contains("\"bytes\":5000000000"), init.toJson().constData());
}

void TestWireRecords::readsAnswersStrictly_data()
{
    QTest::addColumn<Reads>("reads");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("isReadable");

    const Reads validate = &isReadable<ValidateTokenResponse>;
    QTest::newRow("both") << validate << R"({"ok":false,"match":true,"more":null})"_ba << true;
    QTest::newRow("match missing") << validate << R"({"ok":true})"_ba << false;
    QTest::newRow("match a number") << validate << R"({"ok":true,"match":1})"_ba << false;
    QTest::newRow("an array") << validate << R"([{"ok":true,"match":true}])"_ba << false;
    QTest::newRow("very deep") << validate << QByteArray(100000, '[') << false;

    const Reads init = &isReadable<InitUploadResponse>;
    const auto initWith = [](const char *headers) {
        return QByteArray(R"({"ok":true,"upload_id":"u","upload_url":"https://s/x")") + headers + '}';
    };
    QTest::newRow("without headers") << init << initWith("") << true;
    QTest::newRow("headers null") << init << initWith(R"(,"required_headers":null)") << true;
    QTest::newRow("headers") << init << initWith(R"(,"required_headers":{"a":"b","c":""})") << true;
    QTest::newRow("headers a number") << init << initWith(R"(,"required_headers":7)") << false;
    QTest::newRow("header a number") << init << initWith(R"(,"required_headers":{"a":"b","c":1})") << false;

    const Reads complete = &isReadable<CompleteUploadResponse>;
    QTest::newRow("complete") << complete << R"({"ok":false})"_ba << true;
    QTest::newRow("complete with 1") << complete << R"({"ok":1})"_ba << false;
}

void TestWireRecords::readsAnswersStrictly()
{
    QFETCH(Reads, reads);
    QFETCH(QByteArray, json);
    QTEST(reads(json), "isReadable");
}

void TestWireRecords::sendsOnlyWhatTheUserAllowed_data()
{
    QTest::addColumn<FeedbackDraft>("draft");
    QTest::addColumn<QByteArray>("members"); // of the report, as far as the user fills them; empty: none

    const auto bug = FeedbackCategory::Bug;
    const auto often = BugOccurrenceFrequency::AlmostEveryTime;
    const auto row = [](const char *name, const FeedbackDraft &draft, const QByteArray &members) {
        QTest::newRow(name) << draft << members;
    };
    row("bug", {bug, u" It\n breaks \u00a0\n"_s, often, {}, false},
        R"({"category":"bug","message":"It\n breaks","occurrence_frequency":"almost_every_time",
            "allow_contact":false})");
    row("improvement", {FeedbackCategory::Improvement, u"x"_s, often, {}, false},
        R"({"category":"feedback","message":"x","allow_contact":false})");
    row("address without permission", {bug, u"x"_s, often, u"a@b"_s, false},
        R"({"category":"bug","message":"x","occurrence_frequency":"almost_every_time","allow_contact":false})");
    row("address with permission", {bug, u"x"_s, {}, u" a@b\t"_s, true},
        R"({"category":"bug","message":"x","occurrence_frequency":"first_time","email":"a@b",
            "allow_contact":true})");
    row("blank address with permission", {bug, u"x"_s, {}, u" \n"_s, true},
        R"({"category":"bug","message":"x","occurrence_frequency":"first_time","allow_contact":true})");
    row("blank description", {bug, u" \u2003\n"_s, {}, {}, false}, {});
}

void TestWireRecords::sendsOnlyWhatTheUserAllowed()
{
    QFETCH(FeedbackDraft, draft);
    QFETCH(QByteArray, members);
    const auto payload = makeFeedbackReportPayload(draft, u"t"_s, {}, {}, QDateTime::currentDateTime());
    QCOMPARE(payload.has_value(), !members.isEmpty());
    if (!payload)
        return;
    auto json = parsed(toJson(*payload));
    for (const auto key : {"token"_L1, "device"_L1, "app"_L1, "occurred_at"_L1})
        json.remove(key);
    QCOMPARE(json, parsed(members));
}

void TestWireRecords::stampsTheTimeInUtc()
{
    const QDateTime moment(QDate(2026, 11, 15), QTime(0, 35, 30, 999), QTimeZone(3600));
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    QCOMPARE(timeStamp(moment), u"2026-11-14T23:35:30Z"_s);
    QLocale::setDefault(QLocale::c());
}

QTEST_GUILESS_MAIN(TestWireRecords)
#include "tst_wire_records.moc"
