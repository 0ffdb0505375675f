#include "platform/window.h"
#include "support/quick_host.h"
#include "ui/alert_view_controller.h"
#include "ui/feedback_view_controller.h"
#include "ui/quick_presenter.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QGuiApplication>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::QuickHost;

namespace {

QByteArray controlsHost(const QByteArray &style, const QByteArray &setting)
{
    return "import QtQuick; import QtQuick.Controls." + style
        + "; ApplicationWindow { width: 390; height: 844; color: 'steelblue'; " + setting + " }";
}

QColor borderOf(const QQuickItem *item)
{
    return item->property("border").value<QObject *>()->property("color").value<QColor>();
}

} // namespace

/// What the form looks like, and what assistive tools are told of it.
class TestFormLook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void laysTheSectionsOutToTheLetter_data();
    void laysTheSectionsOutToTheLetter();
    void makesWayForTheKeyboard_data();
    void makesWayForTheKeyboard();
    void showsWhatHasTheKeyboard();
    void followsTheAppearanceExceptForBorders();
    void isDarkAsTheHostIs_data();
    void isDarkAsTheHostIs();
    void looksTheSameInEveryHost_data();
    void looksTheSameInEveryHost();
    void keepsTheButtonOfALongAlertInReach();
    void keepsTheMenuInSight();
    void slidesUnlessThatIsUnwanted();
    void scrollsUnderAFinger_data();
    void scrollsUnderAFinger();
    void showsTheCardThatHasTheKeyboard();
    void actsOnceForAKeyThatIsHeld();
    void namesEveryControl_data();
    void namesEveryControl();
    void goesThroughTheControlsInTheirOrder();
    void findsSmallButtonsWithAFinger();

private:
    std::shared_ptr<FeedbackViewController> openForm(FeedbackCategory category = FeedbackCategory::Bug,
                                                     int videos = 1);
    QQuickItem *find(const char *name) const { return m_host->find(QLatin1StringView(name)); }
    QRectF rect(const char *name) const { return m_host->rectOf(QLatin1StringView(name)); }

    std::unique_ptr<QuickHost> m_host;
};

void TestFormLook::init()
{
    m_host = std::make_unique<QuickHost>();
    QVERIFY(QTest::qWaitForWindowActive(m_host->window()));
}

void TestFormLook::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::shared_ptr<FeedbackViewController> TestFormLook::openForm(FeedbackCategory category, int videos)
{
    const ZenvorConfiguration configuration(u"token"_s, false);
    FormAttachments attachments;
    attachments.currentScreenshot = QImage(390, 844, QImage::Format_RGB32);
    attachments.currentScreenshot->fill(Qt::darkGreen);
    attachments.additionalAttachments = QList<ReportUploadAttachment>(
        videos, ReportUploadAttachment{"....ftypisom"_ba, u"video/mp4"_s, u"video"_s});
    auto form = std::make_shared<FeedbackViewController>(configuration, ReportClient(configuration), category,
                                                         std::move(attachments), [] {});
    form->present(QuickPresenter::shared(), ModalPresentationStyle::PageSheet, false, m_host->window());
    m_host->window()->grabWindow(); // lays everything out
    return form;
}

void TestFormLook::laysTheSectionsOutToTheLetter_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRectF>("sheet"); // what can be seen of it
    QTest::newRow("phone") << QSize(390, 844) << QRectF(0, 44, 390, 800);
    QTest::newRow("phone on its side") << QSize(844, 390) << QRectF(102, 44, 640, 346);
    QTest::newRow("tablet") << QSize(820, 1180) << QRectF(90, 44, 640, 1136);
}

void TestFormLook::laysTheSectionsOutToTheLetter()
{
    QFETCH(const QSize, size);
    QFETCH(const QRectF, sheet);
    const auto form = openForm();
    m_host->window()->resize(size); // while it is open
    QTRY_COMPARE(find("feedbackSheet")->width(), qreal(size.width()));
    const qreal line = 1 / m_host->window()->effectiveDevicePixelRatio();
    const auto textHeight = [](int pixels, QFont::Weight weight) {
        QFont font;
        font.setPixelSize(pixels);
        font.setWeight(weight);
        return std::ceil(QFontMetricsF(font).height());
    };

    QRectF expected(sheet.left() + 22, sheet.top() + 17, 44, 44);
    QCOMPARE(rect("closeButton"), expected);
    expected.moveRight(sheet.right() - 22);
    QCOMPARE(rect("sendTopButton"), expected);
    qreal section = sheet.top() + 78 + line;

    const qreal width = sheet.width() - 48;
    const qreal title = textHeight(14, QFont::DemiBold);
    QCOMPARE(rect("emailField"), QRectF(sheet.left() + 24, section + 14 + title + 8, width, 32));
    section += 14 + title + 8 + 32 + 22 + line;
    QCOMPARE(rect("messageTextView").topLeft(), QPointF(sheet.left() + 20, section + 14 + title + 6));
    section += 14 + title + 6 + 90 + 12 + line;
    const qreal label = textHeight(13, QFont::DemiBold);
    QCOMPARE(rect("occurrenceFrequencyButton"),
             QRectF(sheet.left() + 24, section + 10 + label + 6, width, 38));
    section += 10 + label + 6 + 38 + 10 + line;

    const QRectF picture(sheet.left() + 24, section + 16, 116, 116);
    QCOMPARE(rect("screenshotContainer"), picture);
    QCOMPARE(rect("screenshotImageView"), picture.adjusted(8, 8, -8, -8));
    QCOMPARE(rect("removeScreenshotButton"), QRectF(picture.right() - 30, picture.top() + 6, 24, 24));
    QCOMPARE(rect("editOverlayButton"), QRectF(picture.right() - 30, picture.bottom() - 30, 24, 24));
    const auto helper = rect("screenshotHelperLabel");
    QCOMPARE(helper.top(), picture.bottom() + 12);
    const auto add = rect("addMediaButton");
    QCOMPARE(add.topLeft(), QPointF(sheet.left() + 24, helper.bottom() + 10));
    QCOMPARE(add.height(), textHeight(12, QFont::DemiBold) + 16);
    const auto strip = rect("additionalMediaScrollView");
    QCOMPARE(strip, QRectF(sheet.left() + 24, add.bottom() + 12, width, 124));
    QCOMPARE(rect("mediaCard"), QRectF(strip.topLeft(), QSizeF(116, 124)));
    QCOMPARE(rect("mediaCardRemoveButton"), QRectF(strip.left() + 86, strip.top() + 6, 24, 24));
    QCOMPARE(rect("mediaCardActionButton"), QRectF(strip.left() + 86, strip.bottom() - 30, 24, 24));
    QCOMPARE(rect("includeContactCheck"), QRectF(sheet.left() + 24, strip.bottom() + 14 + line + 14, 28, 28));
    QCOMPARE(rect("includeContactLabel").left(), sheet.left() + 24 + 28 + 12);
}

void TestFormLook::makesWayForTheKeyboard_data()
{
    QTest::addColumn<QRectF>("keyboard");
    QTest::addColumn<qreal>("safeBottom");
    QTest::addColumn<qreal>("inset");
    QTest::newRow("over the lower part") << QRectF(0, 544, 390, 300) << 0.0 << 312.0;
    QTest::newRow("with a bar of the system") << QRectF(0, 544, 390, 300) << 34.0 << 278.0;
    QTest::newRow("below the window") << QRectF(0, 900, 390, 300) << 0.0 << 12.0;
    QTest::newRow("within the bar of the system") << QRectF(0, 830, 390, 14) << 34.0 << 12.0;
    QTest::newRow("none") << QRectF() << 0.0 << 12.0;
}

void TestFormLook::makesWayForTheKeyboard()
{
    QFETCH(const QRectF, keyboard);
    QFETCH(const qreal, safeBottom);
    m_host->window()->setProperty("zenvorSafeAreaMargins",
                                  QVariant::fromValue(QMarginsF(0, 0, 0, safeBottom)));
    const auto form = openForm();
    auto *const scroll = find("scrollView");
    form->keyboard()->keyboardWillChangeFrame(keyboard, 20);
    QFETCH(const qreal, inset);
    QTRY_COMPARE(scroll->property("bottomMargin").toReal(), inset);
    QCOMPARE(m_host->isShown("keyboardAccessory"_L1), keyboard.top() > 0 && keyboard.top() < 844);
    form->keyboard()->keyboardWillHide(20);
    QTRY_COMPARE(scroll->property("bottomMargin").toReal(), 0.0);
    QVERIFY(!m_host->isShown("keyboardAccessory"_L1));
}

void TestFormLook::showsWhatHasTheKeyboard()
{
    const auto form = openForm();
    m_host->window()->resize(390, 500);
    m_host->tap("messageTextView"_L1);
    form->keyboard()->keyboardWillChangeFrame({0, 240, 390, 260}, 20);
    QTRY_VERIFY(rect("messageTextView").bottom() <= 240);
    QVERIFY(rect("messageTextView").top() >= 44);
    m_host->tap("doneButton"_L1);
    QVERIFY(!find("messageTextView")->hasActiveFocus());
    form->keyboard()->keyboardWillHide(20);
    QTRY_VERIFY(!m_host->isShown("keyboardAccessory"_L1));
    for (int i = 0; i < 20 && !find("includeContactCheck")->hasActiveFocus(); ++i)
        m_host->press(Qt::Key_Tab);
    QTRY_VERIFY(rect("includeContactCheck").bottom() <= 500);
}

void TestFormLook::followsTheAppearanceExceptForBorders()
{
    const auto form = openForm();
    auto *const button = find("screenshotContainer");
    const auto lightBorder = borderOf(button);
    QCOMPARE(lightBorder, QColor::fromRgbF(0, 0, 0, 0.08F));
    QCOMPARE(find("messageTextView")->property("color").value<QColor>(), QColor(Qt::black));
    m_host->window()->setProperty("zenvorInterfaceStyle", u"dark"_s);
    QTRY_COMPARE(find("messageTextView")->property("color").value<QColor>(), QColor(Qt::white));
    QCOMPARE(button->property("color").value<QColor>(), QColor::fromRgbF(0.16F, 0.17F, 0.20F));
    QCOMPARE(borderOf(button), lightBorder);
    const auto picture = m_host->window()->grabWindow();
    const auto pixel = rect("emailField").bottomLeft() + QPointF(0, 10); // of the section
    QCOMPARE(picture.pixel((pixel * m_host->window()->effectiveDevicePixelRatio()).toPoint()),
             QColor::fromRgbF(0.14F, 0.15F, 0.17F).rgb());
}

void TestFormLook::isDarkAsTheHostIs_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<InterfaceStyle>("style");
    const auto row = [](const char *name, const char *style, const char *setting, InterfaceStyle expected) {
        const auto colored = "import QtQuick; import QtQuick.Controls."_ba + style
            + "; ApplicationWindow { width: 390; height: 844; " + setting + " }";
        QTest::newRow(name) << colored << expected;
    };
    row("Basic", "Basic", "", InterfaceStyle::Light);
    row("Basic, dark colour", "Basic", "color: '#202020'", InterfaceStyle::Dark);
    row("Fusion", "Fusion", "", InterfaceStyle::Light);
    row("Fusion, dark palette", "Fusion", "palette { window: '#202020'; windowText: 'white' }",
        InterfaceStyle::Dark);
    row("Material", "Material", "Material.theme: Material.Light", InterfaceStyle::Light);
    row("Material, dark", "Material", "Material.theme: Material.Dark", InterfaceStyle::Dark);
    row("Universal", "Universal", "Universal.theme: Universal.Light", InterfaceStyle::Light);
    row("Universal, dark", "Universal", "Universal.theme: Universal.Dark", InterfaceStyle::Dark);
}

void TestFormLook::isDarkAsTheHostIs()
{
    QFETCH(const QByteArray, host);
    m_host = std::make_unique<QuickHost>(host);
    QVERIFY(QTest::qWaitForWindowActive(m_host->window()));
    const auto form = openForm();
    QTEST(interfaceStyle(m_host->window()), "style");
    const auto text = find("messageTextView")->property("color").value<QColor>();
    QTEST(text == QColor(Qt::white) ? InterfaceStyle::Dark : InterfaceStyle::Light, "style");
}

void TestFormLook::looksTheSameInEveryHost_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::newRow("Basic") << controlsHost("Basic", "");
    QTest::newRow("Fusion, other colours")
        << controlsHost("Fusion", "palette { text: 'red'; button: 'red' }");
    QTest::newRow("Material") << controlsHost("Material", "");
    QTest::newRow("Universal") << controlsHost("Universal", "");
    QTest::newRow("another font") << controlsHost("Basic",
                                                  "font { pixelSize: 30; italic: true; bold: true }");
    QTest::newRow("mirrored") << controlsHost(
        "Basic", "LayoutMirroring.enabled: true; LayoutMirroring.childrenInherit: true");
}

void TestFormLook::looksTheSameInEveryHost()
{
    QFETCH(const QByteArray, host);
    const auto picture = [this] {
        const auto form = openForm();
        return m_host->window()->grabWindow();
    };
    const auto plain = picture();
    m_host = std::make_unique<QuickHost>(host);
    QVERIFY(QTest::qWaitForWindowActive(m_host->window()));
    m_host->window()->setProperty("zenvorInterfaceStyle", u"light"_s);
    QCOMPARE(picture(), plain);
}

void TestFormLook::keepsTheButtonOfALongAlertInReach()
{
    m_host->window()->resize(844, 390);
    const auto alert = std::make_shared<AlertViewController>(
        u"Failed to Send"_s, u"<b>words</b> "_s.repeated(400), std::function<void()>());
    alert->present(QuickPresenter::shared(), ModalPresentationStyle::Alert, false, m_host->window());
    QTRY_COMPARE(find("alert")->height(), 390.0);
    QVERIFY(rect("alertOkButton").bottom() <= 390 - 20 + 1);
    QVERIFY(rect("alertMessage").bottom() > 390); // it scrolls
    QVERIFY(find("alertMessage")->property("text").toString().startsWith("<b>"_L1));
    m_host->tap("alertOkButton"_L1);
    QTRY_VERIFY(!m_host->isShown("alert"_L1));
}

void TestFormLook::slidesUnlessThatIsUnwanted()
{
    for (const bool isUnwanted : {false, true}) {
        qApp->setProperty("zenvorReducedMotion", isUnwanted);
        const auto form = openForm();
        auto *const popup = find("feedbackSheet")->parentItem();
        qreal lowest = 0;
        connect(popup, &QQuickItem::yChanged, this, [&] { lowest = std::max(lowest, popup->y()); });
        form->closeTapped();
        QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
        QCOMPARE(lowest > 100, !isUnwanted);
    }
    qApp->setProperty("zenvorReducedMotion", {});
}

void TestFormLook::keepsTheMenuInSight()
{
    m_host->window()->resize(844, 390);
    const auto form = openForm();
    QTRY_COMPARE(find("feedbackSheet")->height(), 390.0);
    m_host->drag({112, 300}, -200);
    m_host->tap("occurrenceFrequencyButton"_L1);
    const auto first = rect("occurrenceFrequencyChoice");
    QVERIFY(first.top() >= 8);
    QVERIFY(first.top() + 5 * first.height() <= 390 - 8);
    m_host->press(Qt::Key_K, Qt::ControlModifier); // a shortcut of the host's
    m_host->press(Qt::Key_Back);
    QTRY_VERIFY(!m_host->isShown("occurrenceFrequencyChoice"_L1));
    QVERIFY(m_host->isShown("feedbackSheet"_L1));
    QCOMPARE(m_host->reached(), 0);
}

void TestFormLook::scrollsUnderAFinger_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<QPoint>("start");
    QTest::newRow("from a button") << controlsHost("Basic", "") << QPoint(44, 84);
    QTest::newRow("from the description") << controlsHost("Basic", "") << QPoint(195, 290);
    QTest::newRow("over a host that is dragged itself") << QuickHost::plainWindow() << QPoint(195, 130);
}

void TestFormLook::scrollsUnderAFinger()
{
    QFETCH(const QByteArray, host);
    QFETCH(const QPoint, start);
    m_host = std::make_unique<QuickHost>(host);
    QVERIFY(QTest::qWaitForWindowActive(m_host->window()));
    m_host->window()->resize(390, 400);
    const auto form = openForm();
    QTRY_COMPARE(find("feedbackSheet")->height(), 400.0);
    m_host->drag(start, -100);
    QVERIFY(find("scrollView")->property("contentY").toReal() > 20);
    QVERIFY(m_host->isShown("feedbackSheet"_L1)); // the finger did not tap
    QCOMPARE(m_host->reached(), 0);
}

void TestFormLook::showsTheCardThatHasTheKeyboard()
{
    const auto form = openForm(FeedbackCategory::Bug, 4);
    for (int i = 0; i < 15; ++i)
        m_host->press(Qt::Key_Tab);
    const auto *button = m_host->window()->activeFocusItem();
    QCOMPARE(button->objectName(), u"mediaCardRemoveButton"_s);
    const auto place = button->mapRectToScene({0, 0, button->width(), button->height()});
    QVERIFY(place.left() >= 24 && place.right() <= 390 - 24);
}

void TestFormLook::actsOnceForAKeyThatIsHeld()
{
    const auto form = openForm();
    find("includeContactCheck")->forceActiveFocus(Qt::TabFocusReason);
    m_host->press(Qt::Key_Return);
    for (int i = 0; i < 3; ++i) {
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
        QCoreApplication::sendEvent(m_host->window(), &repeated);
    }
    QVERIFY(form->allowsContact());
}

void TestFormLook::namesEveryControl_data()
{
    QTest::addColumn<QAccessible::Role>("role");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *control, QAccessible::Role role, const char *name) {
        QTest::newRow(control) << role << QString::fromLatin1(name);
    };
    row("feedbackSheet", QAccessible::Dialog, "Report a bug");
    row("closeButton", QAccessible::Button, "Close");
    row("sendTopButton", QAccessible::Button, "Send");
    row("emailField", QAccessible::EditableText, "Email");
    row("messageTextView", QAccessible::EditableText, "Description");
    row("occurrenceFrequencyButton", QAccessible::Button, "First time");
    row("occurrenceFrequencyChoice", QAccessible::RadioButton, "First time");
    row("screenshotImageView", QAccessible::Graphic, "Screenshot");
    row("removeScreenshotButton", QAccessible::Button, "Remove screenshot");
    row("editOverlayButton", QAccessible::Button, "Edit screenshot");
    row("addMediaButton", QAccessible::Button, "Add Media (2/5)");
    row("mediaCard", QAccessible::Graphic, "Video");
    row("mediaCardActionButton", QAccessible::Button, "Play video");
    row("mediaCardRemoveButton", QAccessible::Button, "Remove attachment");
    row("includeContactCheck", QAccessible::CheckBox, "Allow support contact");
}

void TestFormLook::namesEveryControl()
{
    const auto form = openForm();
    if (QTest::currentDataTag() == "occurrenceFrequencyChoice"_ba)
        m_host->tap("occurrenceFrequencyButton"_L1);
    auto *control = find(QTest::currentDataTag());
    auto *interface = QAccessible::queryAccessibleInterface(control);
    QVERIFY(interface);
    QTEST(interface->role(), "role");
    QTEST(interface->text(QAccessible::Name), "name");
    if (interface->role() == QAccessible::CheckBox) {
        QVERIFY(!interface->state().checked);
        interface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(interface->state().checked);
        QVERIFY(form->allowsContact());
    }
}

void TestFormLook::goesThroughTheControlsInTheirOrder()
{
    const auto form = openForm();
    QStringList order;
    for (int i = 0; i < 12; ++i) {
        m_host->press(Qt::Key_Tab);
        order.append(m_host->window()->activeFocusItem()->objectName());
    }
    const QStringList expected{u"closeButton"_s,
                               u"sendTopButton"_s,
                               u"emailField"_s,
                               u"messageTextView"_s,
                               u"occurrenceFrequencyButton"_s,
                               u"removeScreenshotButton"_s,
                               u"editOverlayButton"_s,
                               u"addMediaButton"_s,
                               u"mediaCardRemoveButton"_s,
                               u"mediaCardActionButton"_s,
                               u"includeContactCheck"_s,
                               u"closeButton"_s};
    QCOMPARE(order, expected);
}

void TestFormLook::findsSmallButtonsWithAFinger()
{
    const auto form = openForm();
    const auto button = rect("removeScreenshotButton"); // 24 points, of 44
    QTest::mouseClick(m_host->window(), Qt::LeftButton, {}, button.center().toPoint() - QPoint(0, 24));
    QVERIFY(m_host->isShown("screenshotContainer"_L1));
    QTest::mouseClick(m_host->window(), Qt::LeftButton, {}, button.center().toPoint() - QPoint(0, 20));
    QVERIFY(!m_host->isShown("screenshotContainer"_L1));
}

QTEST_MAIN(TestFormLook)

#include "tst_form_look.moc"
