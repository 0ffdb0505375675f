#include "client/feedback_category.h"
#include "platform/window.h"
#include "support/log_recorder.h"
#include "support/test_host.h"
#include "support/test_service.h"
#include "ui/category_dialog_view_controller.h"
#include "ui/presenters.h"

#include <zenvor/report_service.h>
#include <zenvor/shake.h>
#include <zenvor/zenvor.h>

#include <QMimeData>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::LogRecorder;
using test::TestHost;
using test::TestService;

namespace {

const auto requested = u"info Zenvor: Manual/automatic present requested."_s;
const auto skipped = u"info Zenvor: Presentation skipped: already presenting."_s;
const auto dialogOpened = u"info Zenvor: Presenting category dialog."_s;
const auto cancelled = u"info Zenvor: Category dialog cancelled."_s;

} // namespace

/// The flow from present() to the screens, in a window of a host, by real events.
class TestPresentation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void opensOneFlowAtATime();
    void leavesTheDialog_data();
    void leavesTheDialog();
    void choosesOnce_data();
    void choosesOnce();
    void keepsTheHostOutOfReach();
    void followsTheAppearanceExceptForTheBorder();
    void laysTheCardOutToTheLetter_data();
    void laysTheCardOutToTheLetter();
    void survivesTheEndOfTheHostsWindow();
    void opensNoFormOverAViewThatIsGone();

private:
    bool isOpen() const { return m_host->find("categoryDialog"_L1); }
    /// Opens a dialog that is not part of a flow.
    std::shared_ptr<CategoryDialogViewController> openDialog();

    TestService m_service;
    std::unique_ptr<TestHost> m_host;
};

void TestPresentation::initTestCase()
{
    QVERIFY(setReportServiceUrl(m_service.url()));
    Zenvor::shared().configure(TestService::token(), true);
}

void TestPresentation::init()
{
    m_host = std::make_unique<TestHost>();
    m_host->awaitFront();
}

void TestPresentation::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::shared_ptr<CategoryDialogViewController> TestPresentation::openDialog()
{
    auto dialog = std::make_shared<CategoryDialogViewController>();
    dialog->present(*presenterFor(m_host->window()), ModalPresentationStyle::OverFullScreen, false,
                    m_host->window());
    m_host->scene()->grabWindow(); // lays everything out
    if (!QTest::qWaitFor([this] { return QGuiApplication::focusWindow() == m_host->scene(); }))
        qFatal("the dialog does not get the keyboard");
    return dialog;
}

void TestPresentation::opensOneFlowAtATime()
{
    LogRecorder log;
    m_host->openDialog();
    Zenvor::shared().present();
    QTRY_COMPARE(log.lines().count(skipped), 1);
    QCOMPARE(log.lines().count(dialogOpened), 1);
    m_host->tap("cancelButton"_L1);
    QTRY_VERIFY(log.lines().contains(cancelled));
    QVERIFY(!isOpen());
    log.take();
    m_host->awaitFront();
    QVERIFY(sendShake());
    QTRY_VERIFY(isOpen());
    QCOMPARE(log.lines().count(dialogOpened), 1);
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(log.lines().contains(cancelled));
}

void TestPresentation::leavesTheDialog_data()
{
    QTest::addColumn<QString>("way");
    for (const auto *way : {"button", "beside the card", "Escape", "Back", "Return on the button"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestPresentation::leavesTheDialog()
{
    QFETCH(const QString, way);
    int cancels = 0;
    const auto dialog = openDialog();
    dialog->onCancel = [&cancels] {
        ++cancels;
    };
    QTRY_VERIFY(isOpen());
    dialog->onSelect = [](FeedbackCategory) {
        QFAIL("nothing was chosen");
    };
    const auto card = m_host->find("cardView"_L1)->mapRectToScene({0, 0, 350, 300});
    QTest::mouseClick(m_host->scene(), Qt::LeftButton, {},
                      QPoint(195, int(card.top()) + 30)); // no way to leave
    if (way == "button"_L1) {
        m_host->tap("cancelButton"_L1);
        m_host->tap("cancelButton"_L1); // while it fades away
    } else if (way == "beside the card"_L1) {
        QTest::mouseClick(m_host->scene(), Qt::LeftButton, {}, {195, 40});
    } else if (way == "Escape"_L1) {
        m_host->press(Qt::Key_Escape);
    } else if (way == "Back"_L1) {
        m_host->press(Qt::Key_Back);
    } else {
        m_host->press(Qt::Key_Tab);
        m_host->press(Qt::Key_Tab);
        m_host->press(Qt::Key_Return);
    }
    QCOMPARE(cancels, 0); // not before it is gone
    QTRY_COMPARE(cancels, 1);
    QVERIFY(!isOpen());
    QTRY_VERIFY(m_host->hasFieldFocus());
}

void TestPresentation::choosesOnce_data()
{
    QTest::addColumn<QByteArrayList>("rows");
    QTest::addColumn<bool>("isBug");
    QTest::newRow("bug") << QByteArrayList{"reportBugRow"} << true;
    QTest::newRow("improvement") << QByteArrayList{"suggestImprovementRow"} << false;
    QTest::newRow("by the keyboard") << QByteArrayList{} << true;
}

void TestPresentation::choosesOnce()
{
    QFETCH(const QByteArrayList, rows);
    QList<FeedbackCategory> choices;
    const auto dialog = openDialog();
    dialog->onSelect = [this, &choices](FeedbackCategory category) {
        choices.append(category);
        QVERIFY(!isOpen());
    };
    dialog->onCancel = [] {
        QFAIL("nothing was cancelled");
    };
    QTRY_VERIFY(isOpen());
    for (const auto &row : rows)
        m_host->tap(QLatin1StringView(row));
    if (rows.isEmpty())
        m_host->press(Qt::Key_Space);
    QCOMPARE(choices.size(), 1); // at once, without animation
    dialog->suggestImprovement(); // a second tap that was under way
    dialog->cancelTapped();
    QCoreApplication::processEvents();
    QFETCH(const bool, isBug);
    QCOMPARE(choices, QList{isBug ? FeedbackCategory::Bug : FeedbackCategory::Improvement});
}

void TestPresentation::keepsTheHostOutOfReach()
{
    const auto dialog = openDialog();
    QTRY_VERIFY(isOpen());
    const auto center = QPoint(195, 285); // on the card
    QTest::mouseClick(m_host->scene(), Qt::LeftButton, {}, center);
    QTest::mouseClick(m_host->window(), Qt::LeftButton, {}, center); // where that is another one
    m_host->press(Qt::Key_K, Qt::ControlModifier);
    m_host->press(Qt::Key_X);
    for (int i = 0; i < 8; ++i) {
        m_host->press(Qt::Key_Tab);
        QVERIFY(!m_host->hasFieldFocus());
    }
    for (const int y : {100, 285, 400}) // beside the card, on it, on a row
        m_host->drag({195, y}, 100);
    const QMimeData dragged;
    QDragEnterEvent entering(center, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_host->scene(), &entering);
    QDropEvent dropping(center, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_host->scene(), &dropping);
    QVERIFY(isOpen());
    QCOMPARE(m_host->reached(), 0);
    QCOMPARE(m_host->fieldText(), QString());
    m_host->press(Qt::Key_Escape);
    m_host->press(Qt::Key_Escape); // while it fades away
    QTRY_VERIFY(!isOpen());
    QCOMPARE(m_host->reached(), 0);
}

void TestPresentation::followsTheAppearanceExceptForTheBorder()
{
    const auto dialog = openDialog();
    QTRY_VERIFY(isOpen());
    auto *card = m_host->find("cardView"_L1);
    const auto border = [card] {
        return card->property("border").value<QObject *>()->property("color").value<QColor>();
    };
    QCOMPARE(card->property("color").value<QColor>(), QColor(Qt::white));
    const auto borderBefore = border();
    QCOMPARE(borderBefore, QColor::fromRgbF(0, 0, 0, 0.06F));
    m_host->window()->setProperty("zenvorInterfaceStyle", u"dark"_s);
    QTRY_COMPARE(card->property("color").value<QColor>(), QColor::fromRgbF(0.14F, 0.15F, 0.18F));
    QCOMPARE(border(), borderBefore);
}

void TestPresentation::laysTheCardOutToTheLetter_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("phone") << QSize(390, 844);
    QTest::newRow("phone on its side") << QSize(844, 390);
    QTest::newRow("tablet") << QSize(820, 1180);
}

void TestPresentation::laysTheCardOutToTheLetter()
{
    QFETCH(const QSize, size);
    const auto dialog = openDialog();
    QTRY_VERIFY(isOpen());
    m_host->window()->resize(size); // while it is open
    QTRY_COMPARE(m_host->find("categoryDialog"_L1)->width(), qreal(size.width()));
    QTRY_COMPARE(m_host->rectOf("cardView"_L1).width(), size.width() - 40.0);
    const auto card = m_host->rectOf("cardView"_L1);
    QCOMPARE(card.left(), 20.0);
    QVERIFY(std::abs(card.center().y() - (size.height() / 2.0 - 8)) <= 0.5); // on a whole point
    const auto bug = m_host->rectOf("reportBugRow"_L1);
    QCOMPARE(bug.top() - card.top(), 18.0 + 50 + 12);
    QVERIFY(bug.height() >= 82);
    const auto improvement = m_host->rectOf("suggestImprovementRow"_L1);
    QCOMPARE(improvement.top() - bug.bottom(), 1 / m_host->window()->devicePixelRatio());
    const auto cancel = m_host->rectOf("cancelButton"_L1);
    QCOMPARE(cancel.height(), 54.0);
    QCOMPARE(cancel.bottom(), card.bottom());
    QCOMPARE(m_host->rectOf("blurView"_L1), QRectF({0, 0}, size));
}

void TestPresentation::survivesTheEndOfTheHostsWindow()
{
    LogRecorder log;
    for (int i = 0; i < 2; ++i) { // the guard is cleared
        m_host->openDialog();
        m_host.reset();
        m_host = std::make_unique<TestHost>();
        m_host->awaitFront();
    }
    QCOMPARE(log.lines().count(dialogOpened), 2);
    QVERIFY(!log.lines().contains(skipped));
    QVERIFY(!log.lines().contains(cancelled));
}

void TestPresentation::opensNoFormOverAViewThatIsGone()
{
    LogRecorder log;
    const auto removePage = m_host->showPageInStack();
    m_host->openDialog();
    removePage();
    m_host->tap("reportBugRow"_L1);
    QTRY_VERIFY(!isOpen());
    QVERIFY(!log.lines().contains(u"info Zenvor: Presenting feedback sheet for category."_s));
    log.take();
    m_host->awaitFront();
    Zenvor::shared().present(); // the guard is cleared; what fails now is the search in an empty stack
    QTRY_VERIFY(
        log.lines().contains(u"error Zenvor: Presentation failed: topViewController could not be found."_s));
}

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QGuiApplication::setDesktopFileName(TestService::bundleId());
    const TestHost::Application application(argc, argv);
    TestPresentation test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_presentation.moc"
