#include "platform/window.h"
#include "support/media_files.h"
#include "support/test_host.h"
#include "support/test_service.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>

#include <QBuffer>
#include <QDir>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::clip;
using test::contentsOf;
using test::TestHost;
using test::TestService;

/// Pictures and videos in the form, by real events: choosing, dropping, watching, sending.
class TestMediaScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void choosesFromTheGrid();
    void choosesWithTheKeyboard();
    void takesOtherFiles();
    void saysWhyThereIsNothingToChoose_data();
    void saysWhyThereIsNothingToChoose();
    void decodesOnlyWhatIsSeen();
    void takesWhatIsDropped_data();
    void takesWhatIsDropped();
    void playsAVideo();
    void saysThatAVideoCannotBePlayed();
    void sendsWhatWasDrawn_data();
    void sendsWhatWasDrawn();
    void keepsWhatWasNotSaved();
    void sendsWhatIsStillBeingLoaded();
    void opensOneScreenForTwoTaps();
    void givesTheFocusBack();

private:
    void openForm();
    void openPicker();
    /// The entry of the grid that is shown under this name.
    QQuickItem *entry(const QString &name) const { return find("name", name); }
    QQuickItem *withText(const QString &text) const { return find("text", text); }
    QQuickItem *find(const char *property, const QString &value) const;
    void click(const QQuickItem *item);
    void tapEntry(const QString &name);
    void drop(const QList<QUrl> &files);
    /// Opens the editor by this button and draws a line across its picture, in what the palette begins with.
    void drawBy(QLatin1StringView button);
    /// That many of the pixels are as red as nothing else is.
    static int inkIn(const QImage &image);
    QStringList temporaryFiles() const;
    QString path(const QString &name) const { return m_home->filePath(name); }

    TestService m_service;
    QTemporaryDir m_temporary;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<TestHost> m_host;
};

void TestMediaScreens::initTestCase()
{
    qputenv("TMPDIR", m_temporary.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", m_temporary.filePath(u"none"_s).toLocal8Bit());
    QVERIFY(setReportServiceUrl(m_service.url()));
    Zenvor::shared().configure(TestService::token(), false);
}

void TestMediaScreens::init()
{
    m_service.reset();
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("HOME", m_home->path().toLocal8Bit());
    QVERIFY(QDir(m_home->path()).mkpath(u"Pictures/more"_s));
    QImage image(80, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(path(u"Pictures/red.png"_s)));
    image.fill(Qt::blue);
    QVERIFY(image.save(path(u"Pictures/more/blue.png"_s)));
    QVERIFY(QFile::copy(clip(u"with_sound.mp4"_s), path(u"Pictures/clip.mp4"_s)));
    m_host = std::make_unique<TestHost>();
    m_host->awaitFront();
}

void TestMediaScreens::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(temporaryFiles().isEmpty()); // whatever way the form went
    Zenvor::shared().clearPendingAttachments();
}

void TestMediaScreens::openForm()
{
    m_host->openForm("suggestImprovementRow"_L1);
}

void TestMediaScreens::openPicker()
{
    m_host->tap("addMediaButton"_L1);
    QTRY_VERIFY(m_host->isShown("mediaPicker"_L1));
    QTRY_COMPARE(m_host->find("mediaPicker"_L1)->mapToScene({}), QPointF());
}

QQuickItem *TestMediaScreens::find(const char *property, const QString &value) const
{
    QList<QQuickItem *> items{m_host->scene()->contentItem()};
    while (!items.isEmpty()) {
        auto *item = items.takeFirst();
        if (item->isVisible() && item->property(property) == value)
            return item;
        items += item->childItems();
    }
    return nullptr;
}

void TestMediaScreens::click(const QQuickItem *item)
{
    m_host->scene()->grabWindow(); // lays everything out
    const auto center = item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    QTest::mouseClick(m_host->scene(), Qt::LeftButton, {}, center);
}

void TestMediaScreens::tapEntry(const QString &name)
{
    QTRY_VERIFY2(entry(name), qPrintable(name));
    click(entry(name));
}

void TestMediaScreens::drop(const QList<QUrl> &files)
{
    QMimeData data;
    data.setUrls(files);
    const QPoint place(195, 400);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_host->scene(), &enter);
    QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_host->scene(), &event);
}

QStringList TestMediaScreens::temporaryFiles() const
{
    return QDir(m_temporary.path()).entryList({u"zenvor-*"_s}, QDir::Files);
}

void TestMediaScreens::choosesFromTheGrid()
{
    openForm();
    openPicker();
    QVERIFY(!m_host->find("mediaPickerDone"_L1)->isEnabled());
    QCOMPARE(m_host->textOf("mediaPickerTitle"_L1), u"Pictures"_s);
    tapEntry(u"more"_s);
    QTRY_COMPARE(m_host->textOf("mediaPickerTitle"_L1), u"more"_s);
    tapEntry(u"blue.png"_s);
    QCOMPARE(m_host->textOf("mediaPickerDone"_L1), u"Done (1)"_s);
    m_host->tap("mediaPickerUp"_L1);
    tapEntry(u"clip.mp4"_s);
    tapEntry(u"red.png"_s);
    QCOMPARE(entry(u"red.png"_s)->property("selection").toInt(), 3);
    tapEntry(u"red.png"_s); // not that one after all
    QCOMPARE(m_host->textOf("mediaPickerDone"_L1), u"Done (2)"_s);
    m_host->tap("mediaPickerDone"_L1);
    QTRY_VERIFY(!m_host->isShown("mediaPicker"_L1));
    QTRY_VERIFY(m_host->textOf("screenshotHelperLabel"_L1).endsWith("\nSelected extra media: 2 (3/5)."_L1));
    QCOMPARE(m_host->textOf("addMediaButton"_L1), u"Add Media (3/5)"_s);

    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    m_host->tap("sendTopButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    const auto &reports = m_service.sandbox().reports();
    const auto &attachments = reports.newest().attachments;
    QCOMPARE(attachments.size(), 3);
    const QDir folder(reports.path(reports.newest().id));
    QCOMPARE(contentsOf(folder.filePath(attachments.at(1).fileName)),
             contentsOf(path(u"Pictures/more/blue.png"_s)));
    QCOMPARE(contentsOf(folder.filePath(attachments.at(2).fileName)),
             contentsOf(path(u"Pictures/clip.mp4"_s)));
}

void TestMediaScreens::choosesWithTheKeyboard()
{
    for (int i = 0; i < 3; ++i)
        Zenvor::shared().addPendingAttachmentData("....ftypisom"_ba, u"video/mp4"_s);
    openForm();
    openPicker(); // there is room for one
    QTRY_VERIFY(entry(u"red.png"_s));
    m_host->press(Qt::Key_Right); // from the folder to the newest file
    m_host->press(Qt::Key_Space);
    QCOMPARE(m_host->textOf("mediaPickerDone"_L1), u"Done (1)"_s);
    m_host->press(Qt::Key_Right);
    m_host->press(Qt::Key_Return); // takes its place
    QCOMPARE(m_host->textOf("mediaPickerDone"_L1), u"Done (1)"_s);
    m_host->press(Qt::Key_Left);
    m_host->press(Qt::Key_Left);
    m_host->press(Qt::Key_Space);
    QTRY_COMPARE(m_host->textOf("mediaPickerTitle"_L1), u"more"_s);
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("mediaPicker"_L1));
    QVERIFY(m_host->isShown("feedbackSheet"_L1));
    QCOMPARE(m_host->textOf("addMediaButton"_L1), u"Add Media (4/5)"_s);
}

void TestMediaScreens::takesOtherFiles()
{
    openForm();
    openPicker();
    tapEntry(u"clip.mp4"_s);
    m_host->tap("mediaPickerOtherFiles"_L1);
    // Qt's own, where the system has none.
    QTRY_VERIFY(find("fileName", u"red.png"_s));
    click(find("fileName", u"red.png"_s));
    QTRY_VERIFY(withText(u"Open"_s) && withText(u"Open"_s)->isEnabled());
    click(withText(u"Open"_s));
    QTRY_VERIFY(!m_host->isShown("mediaPicker"_L1));
    QTRY_COMPARE(m_host->textOf("addMediaButton"_L1), u"Add Media (3/5)"_s); // beside what was chosen here
}

void TestMediaScreens::saysWhyThereIsNothingToChoose_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("message");
    QTest::newRow("empty") << u"Pictures"_s << u"No pictures or videos here."_s;
    QTest::newRow("gone") << u"Videos"_s << u"This folder cannot be opened."_s;
}

void TestMediaScreens::saysWhyThereIsNothingToChoose()
{
    QDir(path(u"Pictures"_s)).removeRecursively();
    QDir(m_home->path()).mkdir(u"Pictures"_s);
    openForm();
    openPicker();
    QTRY_VERIFY(m_host->isShown("mediaPickerMessage"_L1));
    if (QTest::currentDataTag() == "gone"_ba) {
        auto *picker = m_host->find("mediaPicker"_L1)->property("controller").value<QObject *>();
        QMetaObject::invokeMethod(picker, "open", Q_ARG(QString, path(u"Videos"_s)));
    }
    QFETCH(const QString, message);
    QTRY_COMPARE(m_host->textOf("mediaPickerMessage"_L1), message);
}

void TestMediaScreens::decodesOnlyWhatIsSeen()
{
    for (int i = 0; i < 500; ++i)
        QVERIFY(QFile::link(path(u"Pictures/red.png"_s), path(u"Pictures/%1.png"_s.arg(i))));
    openForm();
    openPicker();
    auto *grid = m_host->find("mediaPickerGrid"_L1);
    QTRY_COMPARE(grid->property("count").toInt(), 503);
    m_host->scene()->grabWindow();
    const auto cells = grid->property("contentItem").value<QQuickItem *>()->childItems().size();
    QVERIFY2(cells < 40, qPrintable(QString::number(cells)));
}

void TestMediaScreens::takesWhatIsDropped_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("used"); // with the screenshot
    QTest::addColumn<bool>("hasScreenshot");
    QTest::addColumn<QString>("alert");
    const QString picture = u"Pictures/red.png"_s;
    const QString video = u"Pictures/clip.mp4"_s;
    QTest::newRow("a picture becomes the screenshot, a video never")
        << QStringList{video, picture, picture} << 3 << true << QString();
    QTest::newRow("no picture") << QStringList{video} << 1 << false << QString();
    QTest::newRow("more than there is room for") << QStringList(7, picture) << 5 << true << QString();
    QTest::newRow("in part unsupported")
        << QStringList{u"Pictures/notes.txt"_s, video} << 1 << false << QString();
    QTest::newRow("unsupported") << QStringList{u"Pictures/notes.txt"_s} << 0 << false
                                 << u"Unsupported File"_s;
}

void TestMediaScreens::takesWhatIsDropped()
{
    QFETCH(const QStringList, files);
    openForm();
    m_host->tap("removeScreenshotButton"_L1);
    QList<QUrl> urls;
    for (const auto &file : files)
        urls.append(QUrl::fromLocalFile(path(file)));
    drop(urls);
    QFETCH(const QString, alert);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), alert);
    QFETCH(const int, used);
    QTRY_COMPARE(m_host->textOf("addMediaButton"_L1), u"Add Media (%1/5)"_s.arg(used));
    QTEST(m_host->isShown("screenshotContainer"_L1), "hasScreenshot");
    if (used == 5) {
        drop(urls);
        QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Attachment Limit"_s);
    }
}

void TestMediaScreens::playsAVideo()
{
#ifdef ZENVOR_WITH_MULTIMEDIA
    Zenvor::shared().addPendingAttachmentData(contentsOf(clip(u"with_sound.mp4"_s)), u"video/mp4"_s);
    openForm();
    auto *card = m_host->find("mediaCard"_L1)->property("card").value<QObject *>();
    QTRY_COMPARE(card->property("image").value<QImage>().size(), QSize(96, 64));
    const auto files = temporaryFiles();
    QCOMPARE(files.size(), 1);
    m_host->tap("mediaCardActionButton"_L1);
    QTRY_VERIFY(m_host->isShown("videoPlayer"_L1));
    auto *player = m_host->find("videoPlayer"_L1)->property("controller").value<QObject *>();
    QTRY_VERIFY(player->property("isPlaying").toBool());
    QTRY_VERIFY(player->property("position").toInt() > 300);
    m_host->press(Qt::Key_Space);
    QTRY_VERIFY(!player->property("isPlaying").toBool());
    const auto picture = m_host->scene()->grabWindow();
    const auto area = m_host->rectOf("videoPicture"_L1);
    const auto color = [&](qreal part) {
        const QPointF place(area.left() + area.width() * 0.1, area.top() + area.height() * part);
        return picture.pixelColor((place * picture.devicePixelRatio()).toPoint());
    };
    QVERIFY(color(0.2).red() > 180 && color(0.2).blue() < 90);
    QVERIFY(color(0.8).blue() > 180 && color(0.8).red() < 90);
    QCOMPARE(qRound(area.width()), int(m_host->scene()->width())); // as large as fits

    QTest::mouseClick(m_host->scene(), Qt::LeftButton, {},
                      m_host->rectOf("videoPlayerSlider"_L1).center().toPoint());
    QTRY_VERIFY(qAbs(player->property("position").toInt() - 1'000) < 150);
    QMetaObject::invokeMethod(player, "seek", Q_ARG(int, 0)); // before there is green in the middle
    QTRY_VERIFY(player->property("picture").value<QImage>().pixelColor(48, 32).green() < 90);
    QVERIFY(!player->property("isPlaying").toBool());
    QTest::qWait(200); // it stands still
    QVERIFY(player->property("position").toInt() < 200);
    QCOMPARE(temporaryFiles(), files); // the same one
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("videoPlayer"_L1));
    QVERIFY(m_host->isShown("feedbackSheet"_L1));
    m_host->tap("closeButton"_L1);
    QTRY_VERIFY(!m_host->isShown("feedbackSheet"_L1));
    QTRY_VERIFY(temporaryFiles().isEmpty());
#else
    saysThatAVideoCannotBePlayed();
#endif
}

void TestMediaScreens::saysThatAVideoCannotBePlayed()
{
    Zenvor::shared().addPendingAttachmentData("....ftypisom"_ba, u"video/mp4"_s);
    openForm();
    m_host->tap("mediaCardActionButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Preview Error"_s);
    QCOMPARE(m_host->textOf("alertMessage"_L1), u"Could not preview selected video."_s);
    QTRY_VERIFY(!m_host->isShown("videoPlayer"_L1));
    m_host->press(Qt::Key_Return); // the alert has the keyboard
    QTRY_VERIFY(!m_host->isShown("alert"_L1));
    QVERIFY(m_host->isShown("feedbackSheet"_L1));
}

void TestMediaScreens::drawBy(QLatin1StringView button)
{
    m_host->tap(button);
    QTRY_VERIFY(m_host->isShown("screenshotEditor"_L1));
    QTRY_COMPARE(m_host->find("screenshotEditor"_L1)->mapToScene({}), QPointF());
    const auto middle = m_host->rectOf("canvasView"_L1).center().toPoint();
    auto *scene = m_host->scene();
    QTest::mousePress(scene, Qt::LeftButton, {}, middle - QPoint(100, 0));
    for (int x = -100; x <= 100; x += 20)
        QTest::mouseMove(scene, middle + QPoint(x, 0));
    QTest::mouseRelease(scene, Qt::LeftButton, {}, middle + QPoint(100, 0));
}

int TestMediaScreens::inkIn(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            count += color.red() > 200 && color.green() < 110 && color.blue() < 110;
        }
    }
    return count;
}

void TestMediaScreens::sendsWhatWasDrawn_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("index"); // in the report
    QTest::newRow("on the screenshot") << u"editOverlayButton"_s << 0;
    QTest::newRow("on another picture") << u"mediaCardActionButton"_s << 1;
}

void TestMediaScreens::sendsWhatWasDrawn()
{
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    Zenvor::shared().addPendingAttachment(picture, 0.9);
    Zenvor::shared().addPendingAttachment(picture, 0.9);
    openForm();
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    QFETCH(const QString, button);
    drawBy(QLatin1StringView(button.toLatin1()));
    const auto area = m_host->rectOf("canvasView"_L1).size();
    m_host->tap("saveButton"_L1);
    QTRY_VERIFY(!m_host->isShown("screenshotEditor"_L1));
    m_host->tap("sendTopButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    const auto &reports = m_service.sandbox().reports();
    QFETCH(const int, index);
    for (int i = 0; i < 2; ++i) {
        const auto &file = reports.newest().attachments.at(i);
        QCOMPARE(file.mimeType, u"image/jpeg"_s);
        const QImage sent(QDir(reports.path(reports.newest().id)).filePath(file.fileName));
        QCOMPARE(inkIn(sent) > 300, i == index);
        QCOMPARE(sent.size(),
                 i == index ? (area * m_host->scene()->devicePixelRatio()).toSize() : picture.size());
        if (i == index)
            QCOMPARE(sent.pixelColor(5, 5), QColor(Qt::white)); // beside the picture
    }
}

void TestMediaScreens::keepsWhatWasNotSaved()
{
    QImage picture(200, 100, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    Zenvor::shared().addPendingAttachment(picture, 0.9);
    openForm();
    drawBy("editOverlayButton"_L1);
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("screenshotEditor"_L1));
    const auto shown = m_host->find("screenshotImageView"_L1)->property("image").value<QImage>();
    QCOMPARE(shown.size(), picture.size());
    QCOMPARE(inkIn(shown), 0);
    QVERIFY(m_host->isShown("feedbackSheet"_L1));
}

void TestMediaScreens::sendsWhatIsStillBeingLoaded()
{
    openForm();
    m_host->tap("messageTextView"_L1);
    m_host->type(u"words");
    drop({QUrl::fromLocalFile(path(u"Pictures/red.png"_s)),
          QUrl::fromLocalFile(path(u"Pictures/clip.mp4"_s))});
    m_host->tap("sendTopButton"_L1);
    QTRY_COMPARE(m_host->textOf("alertTitle"_L1), u"Thank You"_s);
    QCOMPARE(m_service.sandbox().reports().newest().attachments.size(), 3);
}

void TestMediaScreens::opensOneScreenForTwoTaps()
{
    Zenvor::shared().addPendingAttachmentData(contentsOf(clip(u"with_sound.mp4"_s)), u"video/mp4"_s);
    openForm();
    auto *form = m_host->find("feedbackSheet"_L1)->property("controller").value<QObject *>();
    for (const auto *operation : {"editScreenshotTapped", "addMediaTapped", "addMediaTapped"})
        QMetaObject::invokeMethod(form, operation);
    QTRY_VERIFY(m_host->isShown("screenshotEditor"_L1));
    QVERIFY(!m_host->isShown("mediaPicker"_L1));
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("screenshotEditor"_L1));
    for (int i = 0; i < 2; ++i)
        QMetaObject::invokeMethod(form, "previewVideoAttachment", Q_ARG(int, 0));
#ifdef ZENVOR_WITH_MULTIMEDIA
    QTRY_VERIFY(m_host->isShown("videoPlayer"_L1));
    QTest::qWait(300);
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("videoPlayer"_L1));
#endif
}

void TestMediaScreens::givesTheFocusBack()
{
    openForm();
    m_host->find("addMediaButton"_L1)->forceActiveFocus(Qt::TabFocusReason);
    m_host->press(Qt::Key_Space);
    QTRY_VERIFY(m_host->isShown("mediaPicker"_L1));
    QTRY_VERIFY(entry(u"red.png"_s));
    m_host->press(Qt::Key_Right);
    const auto *focused = m_host->scene()->activeFocusItem();
    QVERIFY(!focused->property("isFolder").toBool() && !focused->property("text").toString().isEmpty());
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->isShown("mediaPicker"_L1));
    QTRY_COMPARE(m_host->scene()->activeFocusItem(), m_host->find("addMediaButton"_L1));

    drop({QUrl::fromLocalFile(path(u"Pictures/red.png"_s))});
    QTRY_VERIFY(m_host->isShown("mediaCardRemoveButton"_L1));
    auto *remove = m_host->find("mediaCardRemoveButton"_L1);
    remove->forceActiveFocus(Qt::TabFocusReason);
    drop({QUrl::fromLocalFile(path(u"Pictures/more/blue.png"_s))});
    QTRY_COMPARE(m_host->textOf("addMediaButton"_L1), u"Add Media (3/5)"_s);
    QCOMPARE(m_host->scene()->activeFocusItem(), remove); // the strip did not take it away
    m_host->press(Qt::Key_Space);
    QTRY_COMPARE(m_host->textOf("addMediaButton"_L1), u"Add Media (2/5)"_s);
    QCOMPARE(m_host->scene()->activeFocusItem()->objectName(), u"mediaCardRemoveButton"_s);
    m_host->press(Qt::Key_Space);
    QTRY_COMPARE(m_host->scene()->activeFocusItem(), m_host->find("addMediaButton"_L1));
}

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QGuiApplication::setDesktopFileName(TestService::bundleId());
    const TestHost::Application application(argc, argv);
    TestMediaScreens test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_media_screens.moc"
