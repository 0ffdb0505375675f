#include "editor/screenshot_editor_view_controller.h"
#include "resources/string_table.h"
#include "support/quick_host.h"
#include "ui/alert_view_controller.h"
#include "ui/category_dialog_view_controller.h"
#include "ui/feedback_view_controller.h"
#include "ui/quick_presenter.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::QuickHost;

namespace {

// Letters of a language that is written from right to left in the place of English ones.
QString mirrored(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPlaceholder = i > 0 && text.at(i - 1) == u'%';
        const char16_t letter = text.at(i).toLower().unicode();
        if (!isPlaceholder && letter >= u'a' && letter <= u'z')
            text[i] = QChar(char16_t(0x5d0 + letter - u'a'));
    }
    return text;
}

// Words like the text's own, to 1.6 times its length.
QString lengthened(const QString &text)
{
    auto more = text.left(text.size() * 6 / 10);
    return text + u' ' + more.remove(u'%');
}

QList<QQuickItem *> shownTexts(QQuickItem *item)
{
    QList<QQuickItem *> texts;
    if (!item->isVisible() || item->opacity() == 0)
        return texts;
    if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty())
        texts.append(item);
    const auto children = item->childItems();
    for (auto *child : children)
        texts += shownTexts(child);
    return texts;
}

QRectF inScene(const QQuickItem *text)
{
    return text->mapRectToScene({0, 0, text->width(), text->property("contentHeight").toReal()});
}

} // namespace

/// The screens in languages with longer texts, and in such that are written from right to left: made-up ones,
/// so that every text is another.
class TestLanguages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void findsRoomForEveryText_data();
    void findsRoomForEveryText();
    void beginsOnTheRight();

private:
    void write(const QString &language, QString (*translate)(QString));
    void openHost(const QString &language, QSize size);
    std::shared_ptr<ViewController> open(const QByteArray &screen);

    std::unique_ptr<QuickHost> m_host;
};

void TestLanguages::initTestCase()
{
    write(u"en"_s, [](QString text) { return text; });
    write(u"fr"_s, [](QString text) { return lengthened(text); });
    write(u"he"_s, [](QString text) { return mirrored(lengthened(text)); });
}

// Into the bundle that this application has, which comes before the library's own.
void TestLanguages::write(const QString &language, QString (*translate)(QString))
{
    QFile english(QStringLiteral(ZENVOR_SOURCES "/resources/ZenvorSDK_ZenvorSDK.bundle/zenvor_en.ts"));
    QVERIFY(english.open(QIODevice::ReadOnly));
    const auto table = QString::fromUtf8(english.readAll());
    static const QRegularExpression translation(u"<translation>(.*?)</translation>"_s);
    QString translated;
    qsizetype end = 0;
    for (auto texts = translation.globalMatch(table); texts.hasNext();) {
        const auto text = texts.next();
        translated += table.mid(end, text.capturedStart(1) - end) + translate(text.captured(1));
        end = text.capturedEnd(1);
    }
    translated += table.mid(end);

    const auto bundle = u"%1/../share/%2/ZenvorSDK_ZenvorSDK.bundle"_s.arg(
        QCoreApplication::applicationDirPath(), QCoreApplication::applicationName());
    QVERIFY(QDir().mkpath(bundle));
    QFile source(u"%1/%2.ts"_s.arg(bundle, language));
    QVERIFY(source.open(QIODevice::WriteOnly) && source.write(translated.toUtf8()) > 0);
    source.close();
    QCOMPARE(QProcess::execute(
                 QStringLiteral(ZENVOR_LRELEASE),
                 {u"-silent"_s, source.fileName(), u"-qm"_s, u"%1/zenvor_%2.qm"_s.arg(bundle, language)}),
             0);
}

void TestLanguages::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestLanguages::openHost(const QString &language, QSize size)
{
    QLocale::setDefault(QLocale(language));
    m_host = std::make_unique<QuickHost>();
    QVERIFY(QTest::qWaitForWindowActive(m_host->window()));
    m_host->window()->resize(size);
    QTRY_COMPARE(m_host->window()->contentItem()->size(), QSizeF(size));
}

std::shared_ptr<ViewController> TestLanguages::open(const QByteArray &screen)
{
    const ZenvorConfiguration configuration(u"token"_s, false);
    std::shared_ptr<ViewController> controller;
    auto style = ModalPresentationStyle::PageSheet;
    if (screen == "dialog") {
        controller = std::make_shared<CategoryDialogViewController>();
        style = ModalPresentationStyle::OverFullScreen;
    } else if (screen == "alert") {
        controller = std::make_shared<AlertViewController>(
            localizedString("zenvor_token_configuration_title"_ba, {}),
            localizedString("zenvor_token_configuration_message"_ba, {}), std::function<void()>());
        style = ModalPresentationStyle::Alert;
    } else if (screen == "editor") {
        controller = std::make_shared<ScreenshotEditorViewController>(QImage(100, 200, QImage::Format_RGB32),
                                                                      [](const QImage &) {});
        style = ModalPresentationStyle::FullScreen;
    } else {
        FormAttachments attachments;
        attachments.currentScreenshot = QImage(100, 200, QImage::Format_RGB32);
        attachments.currentScreenshot->fill(Qt::darkGreen);
        attachments.additionalAttachments = {{"....ftypisom"_ba, u"video/mp4"_s, u"video"_s}};
        controller = std::make_shared<FeedbackViewController>(
            configuration, ReportClient(configuration), FeedbackCategory::Bug, std::move(attachments), [] {});
    }
    controller->present(QuickPresenter::shared(), style, false, m_host->window());
    const auto picture = m_host->window()->grabWindow(); // lays everything out
    // To be looked at.
    if (const auto folder = qEnvironmentVariable("ZENVOR_PICTURES"); !folder.isEmpty())
        picture.save(u"%1/%2-%3.png"_s.arg(folder, QString::fromUtf8(screen),
                                           QString::fromUtf8(QTest::currentDataTag())));
    return controller;
}

void TestLanguages::findsRoomForEveryText_data()
{
    QTest::addColumn<QByteArray>("screen");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QSize>("size");
    for (const auto *screen : {"dialog", "form", "alert", "editor"}) {
        for (const auto *language : {"en", "fr", "he"}) {
            for (const auto size : {QSize(390, 844), QSize(320, 568), QSize(844, 390)})
                QTest::addRow("%s in %s, %d", screen, language, size.width())
                    << QByteArray(screen) << QString::fromLatin1(language) << size;
        }
    }
}

void TestLanguages::findsRoomForEveryText()
{
    QFETCH(const QByteArray, screen);
    QFETCH(const QString, language);
    QFETCH(const QSize, size);
    openHost(language, size);
    const auto controller = open(screen);
    const auto texts = shownTexts(m_host->find(screen == "dialog"       ? "categoryDialog"_L1
                                                   : screen == "form"   ? "feedbackSheet"_L1
                                                   : screen == "editor" ? "screenshotEditor"_L1
                                                                        : "alert"_L1));
    QVERIFY(texts.size() >= 3);
    for (const auto *text : texts) {
        const auto words = text->property("text").toString();
        const auto place = inScene(text);
        QVERIFY2(place.left() >= 0 && place.right() <= size.width() + 0.01, qPrintable(words));
        // Where there is little room, what has a line or two to itself may be cut.
        const bool mayBeCut =
            text->property("wrapMode").toInt() == 0 || text->property("maximumLineCount").toInt() == 2;
        const bool hasRoom = language == u"en"_s || !mayBeCut;
        if (size.width() >= 390 && hasRoom)
            QVERIFY2(!text->property("truncated").toBool(), qPrintable(words));
        for (const auto *other : texts) {
            QVERIFY2(other == text || !inScene(other).intersects(place),
                     qPrintable(words + " | "_L1 + other->property("text").toString()));
        }
    }
}

void TestLanguages::beginsOnTheRight()
{
    openHost(u"he"_s, {390, 844});
    const auto form = open("form");
    QVERIFY(m_host->rectOf("closeButton"_L1).left() > m_host->rectOf("sendTopButton"_L1).right());
    QCOMPARE(m_host->rectOf("screenshotContainer"_L1).right(), 390 - 24.0);
    QCOMPARE(m_host->rectOf("removeScreenshotButton"_L1).left(), 390 - 24.0 - 116 + 6);
    QCOMPARE(m_host->rectOf("includeContactCheck"_L1).right(), 390 - 24.0);
    QCOMPARE(m_host->rectOf("mediaCard"_L1).right(), 390 - 24.0);
    m_host->tap("occurrenceFrequencyButton"_L1);
    const auto *choice = m_host->find("occurrenceFrequencyChoice"_L1);
    QVERIFY(choice);
    const auto words = shownTexts(m_host->find("occurrenceFrequencyChoice"_L1)).constFirst();
    QVERIFY(words->x() > 20); // the mark is on the left
    QLocale::setDefault(QLocale(u"en"_s));
}

QTEST_MAIN(TestLanguages)

#include "tst_languages.moc"
