#include "platform/window.h"
#include "support/log_recorder.h"
#include "support/test_host.h"
#include "support/test_service.h"
#include "ui/feedback_view_controller.h"
#include "ui/send_error_message.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>

#include <QBuffer>
#include <QClipboard>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::TestHost;
using test::TestService;

/// The form in a host's window, by real events: what the user reads, and what reaches the service.
class TestForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void deliversWhatWasTyped_data();
    void deliversWhatWasTyped();
    void asksForADescription();
    void tellsWhatWentWrong_data();
    void tellsWhatWentWrong();
    void choosesTheMessageByPhrases_data();
    void choosesTheMessageByPhrases();
    void cannotBeLeftByItsButtonsWhileItSends();
    void sendsOnWhenTheHostsWindowIsGone();
    void removesTheScreenshot();
    void removesAnAttachment();
    void leavesStepByStep();
    void sendsNothingOnceItLeaves();
    void takesATextWithoutEnd();
    void knowsHowManyFilesFit();
    void swipedAwayItBlocksTheNextFlow();

private:
    /// The last report that was posted.
    QJsonObject report() const;

    TestService m_service;
    std::unique_ptr<TestHost> m_host;
};

void TestForm::initTestCase()
{
    QVERIFY(setReportServiceUrl(m_service.url()));
    Zenvor::shared().configure(TestService::token(), false);
}

void TestForm::init()
{
    m_service.reset();
    m_host = std::make_unique<TestHost>();
    m_host->awaitFront();
}

void TestForm::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QJsonObject TestForm::report() const
{
    const auto requests = m_service.requests();
    for (auto request = requests.crbegin(); request != requests.crend(); ++request) {
        if (request->target == "/v1/sdk/reports")
            return QJsonDocument::fromJson(request->body).object();
    }
    return {};
}

void TestForm::deliversWhatWasTyped_data()
{
    QTest::addColumn<bool>("isBug");
    QTest::addColumn<bool>("allowsContact");
    QTest::newRow("bug") << true << true;
    QTest::newRow("improvement, no contact") << false << false;
}

void TestForm::deliversWhatWasTyped()
{
    QFETCH(const bool, isBug);
    QFETCH(const bool, allowsContact);
    Zenvor::shared().addPendingAttachmentData("....ftypisom"_ba, u"video/mp4"_s);
    const auto style = isBug ? u"dark"_s : u"light"_s;
    m_host->window()->setProperty("zenvorInterfaceStyle", style);
    test::LogRecorder log;
    m_host->openForm(isBug ? "reportBugRow"_L1 : "suggestImprovementRow"_L1);
    QCOMPARE(m_host->isShown("occurrenceFrequencyButton"_L1), isBug);
    QVERIFY(m_host->textOf("screenshotHelperLabel"_L1).endsWith("\nSelected extra media: 1 (2/5)."_L1));
    m_host->tap("messageTextView"_L1);
    m_host->type(u" It breaks <b>now</b> ");
    if (isBug) {
        m_host->tap("occurrenceFrequencyButton"_L1);
        QTRY_VERIFY(m_host->isShown("occurrenceFrequencyChoice"_L1));
        m_host->press(Qt::Key_Down);
        m_host->press(Qt::Key_Return);
        QTRY_COMPARE(m_host->textOf("occurrenceFrequencyButton"_L1), u"A few times (2-3)"_s);
    }
    m_host->tap("emailField"_L1);
    m_host->type(u"a@b.example ");
    if (allowsContact)
        m_host->tap("includeContactLabel"_L1);
    m_host->tap("sendTopButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    QCOMPARE(m_host->textOf("alertMessage"_L1), u"Your report has been received."_s);

    const auto sent = report();
    QCOMPARE(sent.value("message"_L1).toString(), u"It breaks <b>now</b>"_s);
    QCOMPARE(sent.value("category"_L1).toString(), isBug ? u"bug"_s : u"feedback"_s);
    QCOMPARE(sent.value("occurrence_frequency"_L1).toString(), isBug ? u"few_times"_s : QString());
    QCOMPARE(sent.value("email"_L1).toString(), allowsContact ? u"a@b.example"_s : QString());
    QCOMPARE(sent.value("allow_contact"_L1).toBool(), allowsContact);
    QCOMPARE(sent.value("device"_L1)["interface_style"_L1].toString(), style);
    const auto files = m_service.sandbox().reports().newest().attachments;
    QCOMPARE(files.size(), 2);
    QCOMPARE(sent.value("screenshot_upload_id"_L1), sent.value("attachment_upload_ids"_L1)[0]);

    QVERIFY(!log.lines().contains(u"info Zenvor: Presentation skipped: already presenting."_s));
    m_host->tap("alertOkButton"_L1);
    QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
    m_host->awaitFront();
    Zenvor::shared().present(); // the guard is cleared
    QTRY_VERIFY(m_host->isShown("categoryDialog"_L1));
}

void TestForm::asksForADescription()
{
    m_host->openForm("reportBugRow"_L1);
    for (const auto &text : {u""_s, u"  "_s}) {
        if (!text.isEmpty()) {
            m_host->tap("messageTextView"_L1);
            m_host->type(text);
        }
        m_host->tap("sendTopButton"_L1);
        QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Missing Field"_s);
        QCOMPARE(m_host->textOf("alertMessage"_L1), u"Description is required."_s);
        m_host->press(Qt::Key_Escape);
        QTRY_VERIFY(!m_host->isShown("alert"_L1));
        QVERIFY(m_host->isShown("feedbackSheet"_L1));
    }
    QVERIFY(!m_service.requestLines().contains("POST /v1/sdk/validate"_L1));
}

void TestForm::tellsWhatWentWrong_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("isSubmitted");
    const auto token = u"Zenvor Token Error"_s;
    const auto tokenMessage =
        u"Feedback is unavailable. Please check SDK token configuration in Zenvor dashboard."_s;
    const auto failed = u"Failed to Send"_s;
    QTest::newRow("wrong token") << R"({"path":"/v1/sdk/validate","status":401})"_ba << token << tokenMessage
                                 << false;
    QTest::newRow("another app")
        << R"({"path":"/v1/sdk/validate","status":200,"body":"{\"ok\":true,\"match\":false}"})"_ba << token
        << tokenMessage << false;
    QTest::newRow("check fails, report passes")
        << R"({"path":"/v1/sdk/validate","status":503})"_ba << u"Thank You"_s
        << u"Your report has been received."_s << true;
    QTest::newRow("plan")
        << R"({"path":"/v1/sdk/reports","status":402,"body":"{\"message\":\"Plan Limit Reached\"}"})"_ba
        << failed << u"Plan limit reached. Open the Zenvor dashboard Billing page to upgrade and continue."_s
        << true;
    QTest::newRow("lost") << R"({"path":"/v1/sdk/reports","cut":"inBody","bodySize":1000})"_ba << failed
                          << u""_s << true;
    QTest::newRow("markup")
        << R"({"path":"/v1/sdk/reports","status":500,"body":"<img src='http://127.0.0.1:9/x'>"})"_ba << failed
        << u"<img"_s << true;
}

void TestForm::tellsWhatWentWrong()
{
    QFETCH(const QByteArray, fault);
    QFETCH(const QString, message);
    m_host->openForm("reportBugRow"_L1);
    m_service.reset(fault);
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_VERIFY(m_host->isShown("alert"_L1));
    QTEST(m_host->textOf("alertTitle"_L1), "title");
    QVERIFY2(m_host->textOf("alertMessage"_L1).contains(message),
             qPrintable(m_host->textOf("alertMessage"_L1)));
    QFETCH(const bool, isSubmitted);
    QCOMPARE(m_service.requestLines().contains("POST /v1/sdk/reports"_L1), isSubmitted);
    QCOMPARE(m_host->textOf("messageTextView"_L1), u"words"_s); // nothing is lost
}

void TestForm::choosesTheMessageByPhrases_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("message");
    const auto network = u"Network error. Please check your connection and try again."_s;
    const auto timeOut = u"Request timed out. Please try again."_s;
    QTest::newRow("nothing") << u" \n"_s << u"Could not send report. Please try again."_s;
    QTest::newRow("host") << u"Unable to Resolve Host x"_s << network;
    QTest::newRow("connection") << u"COULD NOT CONNECT."_s << network;
    QTest::newRow("timed out") << u"It Timed Out"_s << timeOut;
    QTest::newRow("timeout") << u"gateway timeout"_s << timeOut;
    QTest::newRow("first phrase wins") << u"timeout: could not connect"_s << network;
    QTest::newRow("another text") << u" Report failed: Why "_s << u"Report failed: Why"_s;
}

void TestForm::choosesTheMessageByPhrases()
{
    QFETCH(const QString, description);
    QTEST(userFacingSendErrorMessage(description), "message");
}

void TestForm::cannotBeLeftByItsButtonsWhileItSends()
{
    m_host->openForm("reportBugRow"_L1);
    m_service.reset(R"({"path":"/v1/sdk/reports","delayMs":600,"handle":true})");
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_VERIFY(m_host->isShown("activityIndicator"_L1));
    m_host->tap("sendTopButton"_L1);
    m_host->tap("closeButton"_L1);
    m_host->press(Qt::Key_Escape);
    m_host->tap("messageTextView"_L1);
    m_host->type(u"more");
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    QVERIFY(!m_host->isShown("activityIndicator"_L1));
    QCOMPARE(m_service.requestLines().count("POST /v1/sdk/reports"_L1), 1);
    QCOMPARE(report().value("message"_L1).toString(), u"words"_s);
}

void TestForm::sendsOnWhenTheHostsWindowIsGone()
{
    m_host->openForm("reportBugRow"_L1);
    m_service.reset(R"({"path":"/v1/sdk/validate","delayMs":300,"handle":true})");
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_VERIFY(!m_service.requestLines().isEmpty());
    m_host = std::make_unique<TestHost>();
    QTRY_VERIFY(m_service.requestLines().contains("POST /v1/sdk/reports"_L1));
    QTest::qWait(100);
    QVERIFY(!m_host->isShown("alert"_L1));
}

void TestForm::removesTheScreenshot()
{
    m_host->openForm("reportBugRow"_L1);
    QVERIFY(m_host->isShown("screenshotContainer"_L1));
    const auto helperTop = m_host->find("screenshotHelperLabel"_L1)->mapToScene({}).y();
    m_host->tap("removeScreenshotButton"_L1);
    QVERIFY(!m_host->isShown("screenshotContainer"_L1));
    QCOMPARE(m_host->find("screenshotHelperLabel"_L1)->mapToScene({}).y(), helperTop); // its place is kept
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    QVERIFY(!report().contains("screenshot_upload_id"_L1));
}

void TestForm::removesAnAttachment()
{
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    Zenvor::shared().addPendingAttachment(picture, 0.9);
    Zenvor::shared().addPendingAttachmentData("....ftypisom"_ba, u"video/mp4"_s);
    Zenvor::shared().addPendingAttachment(picture, 0.9);
    m_host->openForm("suggestImprovementRow"_L1);
    const auto shown = m_host->find("screenshotImageView"_L1)->property("image").value<QImage>();
    QCOMPARE(shown.size(), picture.size()); // the first picture is the screenshot
    auto *strip = m_host->find("additionalMediaScrollView"_L1);
    QCOMPARE(strip->height(), 124.0);
    QVERIFY(m_host->textOf("screenshotHelperLabel"_L1).endsWith("\nSelected extra media: 2 (3/5)."_L1));
    m_host->tap("mediaCardRemoveButton"_L1); // the video
    QTRY_VERIFY(m_host->textOf("screenshotHelperLabel"_L1).endsWith("\nSelected extra media: 1 (2/5)."_L1));
    QTRY_VERIFY(m_host->find("mediaCard"_L1)
                    ->property("card")
                    .value<QObject *>()
                    ->property("image")
                    .value<QImage>()
                    .pixelColor(5, 5)
                    .red()
                > 200); // shown when it is decoded
    m_host->tap("mediaCardRemoveButton"_L1);
    QTRY_VERIFY(!strip->isVisible());
    QVERIFY(!m_host->textOf("screenshotHelperLabel"_L1).contains("extra"_L1));
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    QCOMPARE(m_service.sandbox().reports().newest().attachments.size(), 1);
}

void TestForm::leavesStepByStep()
{
    m_host->openForm("reportBugRow"_L1);
    m_host->tap("occurrenceFrequencyButton"_L1);
    QTRY_VERIFY(m_host->isShown("occurrenceFrequencyChoice"_L1));
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("occurrenceFrequencyChoice"_L1));
    m_host->tap("emailField"_L1);
    QVERIFY(m_host->find("emailField"_L1)->hasActiveFocus());
    m_host->press(Qt::Key_Escape);
    QVERIFY(!m_host->find("emailField"_L1)->hasActiveFocus());
    QVERIFY(m_host->isShown("feedbackSheet"_L1));
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
    QTRY_VERIFY(m_host->hasFieldFocus());
}

void TestForm::sendsNothingOnceItLeaves()
{
    m_host->openForm("reportBugRow"_L1);
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    const auto send = m_host->rectOf("sendTopButton"_L1).center().toPoint();
    m_host->tap("closeButton"_L1);
    QTest::mouseClick(m_host->scene(), Qt::LeftButton, {}, send); // while it slides away
    QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
    m_host->openForm("reportBugRow"_L1);
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_VERIFY(m_host->isShown("alertOkButton"_L1));
    m_host->tap("alertOkButton"_L1);
    QTRY_VERIFY(!m_host->isShown("alert"_L1));
    QTest::mouseClick(m_host->scene(), Qt::LeftButton, {}, send);
    QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
    QCOMPARE(m_service.requestLines().count("POST /v1/sdk/validate"_L1), 1);
}

// A log without a line break, say: it has to be laid out in seconds, not hours.
void TestForm::takesATextWithoutEnd()
{
    m_host->openForm("reportBugRow"_L1);
    QGuiApplication::clipboard()->setText(QString(500'000, u'x'));
    m_host->tap("messageTextView"_L1);
    m_host->press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(m_host->textOf("messageTextView"_L1).size(), 500'000);
    QGuiApplication::clipboard()->clear();
}

void TestForm::knowsHowManyFilesFit()
{
    for (int i = 0; i < 4; ++i)
        Zenvor::shared().addPendingAttachmentData("....ftypisom"_ba, u"video/mp4"_s);
    m_host->openForm("reportBugRow"_L1);
    auto *form = m_host->find("feedbackSheet"_L1)->property("controller").value<FeedbackViewController *>();
    QCOMPARE(form->addMediaTitle(), u"Add Media (5/5)"_s);
    form->addMediaTapped();
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Attachment Limit"_s);
    QCOMPARE(m_host->textOf("alertMessage"_L1), u"You can attach up to 5 files per report."_s);
}

// The last one: nothing clears the guard after it.
void TestForm::swipedAwayItBlocksTheNextFlow()
{
    test::LogRecorder log;
    m_host->openForm("reportBugRow"_L1);
    const auto rest = m_host->rectOf("closeButton"_L1);
    m_host->drag({195, 100}, 60); // not far enough
    QTRY_COMPARE(m_host->rectOf("closeButton"_L1), rest);
    m_host->drag({195, 100}, 300);
    QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
    Zenvor::shared().present();
    QTRY_VERIFY(log.lines().contains(u"info Zenvor: Presentation skipped: already presenting."_s));
}

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QGuiApplication::setDesktopFileName(TestService::bundleId());
    const TestHost::Application application(argc, argv);
    TestForm test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_form.moc"
