#include "media/attachment_file.h"
#include "media/attachment_loading.h"
#include "media/media_folder.h"
#include "media/media_list_model.h"
#include "media/media_types.h"
#include "platform/video.h"
#include "platform/video_rotation.h"
#include "support/await.h"
#include "support/media_files.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

#include <sys/stat.h>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::await;
using test::clip;
using test::contentsOf;

namespace {

QByteArray picture(const char *format)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray data;
    QBuffer buffer(&data);
    image.save(&buffer, format);
    return data;
}

bool isRed(QColor color)
{
    return color.red() > 180 && color.green() < 90 && color.blue() < 90;
}
bool isBlue(QColor color)
{
    return color.blue() > 180 && color.green() < 90 && color.red() < 90;
}
bool isGreen(QColor color)
{
    return color.green() > 140 && color.red() < 90 && color.blue() < 90;
}

QStringList temporaryFiles()
{
    return QDir(QDir::tempPath()).entryList({u"zenvor-*"_s}, QDir::Files);
}

} // namespace

/// What becomes of files that a user picks, before they are seen.
class TestMedia : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void attaches_data();
    void attaches();
    void leavesOutWhatCannotBeAttached();
    void loadsNoMoreThanAreWanted();
    void readsOneVideoAfterTheOther();
    void showsVideosUpright_data();
    void showsVideosUpright();
    void survivesWhatIsNoVideo_data();
    void survivesWhatIsNoVideo();
    void readsNoRotationOutOfBrokenFiles();
    void endsWithTheProcess();
    void keepsOneFileOfAVideoForTheUserAlone();
    void writesNoVideoWithoutAFolder();
    void sweepsWhatIsOld();
    void listsAFolderTheNewestFirst();
    void choosesInOrderUpToTheLimit();

private:
    void write(const QString &name, const QByteArray &data) const;
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QUrl url(const QString &name) const { return QUrl::fromLocalFile(path(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QTemporaryDir m_temporary;
};

void TestMedia::initTestCase()
{
    qputenv("TMPDIR", m_temporary.path().toLocal8Bit());
}

void TestMedia::init()
{
    m_folder = std::make_unique<QTemporaryDir>(m_temporary.path() + u"/folder"_s);
    QVERIFY(m_folder->isValid());
}

void TestMedia::write(const QString &name, const QByteArray &data) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(data), data.size());
}

void TestMedia::attaches_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QString>("kind");
    const auto row = [](const char *name, const QByteArray &data, const QString &type, const QString &kind) {
        QTest::newRow(name) << data << type << kind;
    };
    const auto png = picture("PNG");
    const auto webp = picture("WEBP");
    const auto mp4 = contentsOf(clip(u"upright.mp4"_s));
    row("photo.jpg", picture("JPEG"), u"image/jpeg"_s, u"screenshot"_s);
    row("a png that says.jpg", png, u"image/png"_s, u"screenshot"_s);
    row("png without an extension", png, u"image/png"_s, u"screenshot"_s);
    row("short.png", png.first(11), u"image/jpeg"_s, u"screenshot"_s);
    row("just enough.png", png.first(12), u"image/png"_s, u"screenshot"_s);
    row("picture.WebP", webp, u"image/webp"_s, u"screenshot"_s);
    row("sound that says.webp", "RIFF\x24\0\0\0WAVEfmt "_ba, u"image/jpeg"_s, u"screenshot"_s);
    row("photo.HEIC",
        "\0\0\0\x18"
        "ftypheic\0\0\0\0"_ba,
        u"image/jpeg"_s, u"screenshot"_s);
    row("moving.gif", picture("PNG").replace("\x89PNG", "GIF8"), u"image/jpeg"_s, u"screenshot"_s);
    row("clip.MOV", mp4, u"video/quicktime"_s, u"video"_s);
    row("clip.m4v", mp4, u"video/mp4"_s, u"video"_s);
    row("clip.WebM", contentsOf(clip(u"upright.webm"_s)), u"video/webm"_s, u"video"_s);
    row("clip.avi", mp4, u"video/mp4"_s, u"video"_s);
    row("video without an extension", mp4, u"video/mp4"_s, u"video"_s);
    row("100% schön #1?.mp4", mp4, u"video/mp4"_s, u"video"_s);
}

void TestMedia::attaches()
{
    QFETCH(const QByteArray, data);
    const auto name = QString::fromUtf8(QTest::currentDataTag());
    write(name, data);
    const auto attachment = await(loadAttachment(url(name)));
    QVERIFY(attachment);
    QCOMPARE(attachment->data, data);
    QTEST(attachment->mimeType, "mimeType");
    QTEST(attachment->kind, "kind");
}

void TestMedia::leavesOutWhatCannotBeAttached()
{
    write(u"notes.txt"_s, "words"_ba);
    write(u"empty.jpg"_s, {});
    write(u"empty.mp4"_s, {});
    write(u"photo.jpg"_s, picture("JPEG"));
    QDir(m_folder->path()).mkdir(u"folder.jpg"_s);
    QVERIFY(QFile::link(path(u"pipe.mp4"_s), path(u"link.mp4"_s)));
    QVERIFY(::mkfifo(path(u"pipe.mp4"_s).toLocal8Bit().constData(), 0600)
            == 0); // which nobody will ever write to
    const QList<QUrl> picked{url(u"notes.txt"_s),
                             url(u"empty.jpg"_s),
                             url(u"empty.mp4"_s),
                             url(u"gone.jpg"_s),
                             url(u"folder.jpg"_s),
                             url(u"pipe.mp4"_s),
                             url(u"link.mp4"_s),
                             QUrl(u"http://127.0.0.1:9/photo.jpg"_s),
                             QUrl(u"file://elsewhere"_s + path(u"photo.jpg"_s)),
                             QUrl(),
                             url(u"photo.jpg"_s)};
    const auto loaded = await(loadAttachmentsFromPicker(picked, 5));
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().data, picture("JPEG"));
    const auto &listed = MediaFolder::read(m_folder->path()).entries;
    QVERIFY(std::none_of(listed.cbegin(), listed.cend(), [](const auto &entry) {
        return entry.path.endsWith("link.mp4"_L1) || entry.path.endsWith("pipe.mp4"_L1);
    }));
    QVERIFY(!await(videoFrame(path(u"link.mp4"_s), {}, 400, {})));
}

// However many are wanted at once: each takes memory.
void TestMedia::readsOneVideoAfterTheOther()
{
    std::vector<Task<std::optional<QImage>>> frames;
    for (int i = 0; i < 20; ++i)
        frames.push_back(videoFrame(clip(u"upright.mp4"_s), std::chrono::milliseconds(100), 400, {}));
    int threads = 0;
    QTimer sampler;
    connect(&sampler, &QTimer::timeout, this, [&threads] {
        threads = std::max(threads, int(QDir(u"/proc/self/task"_s).entryList(QDir::Dirs).size()));
    });
    sampler.start(1);
    for (auto &frame : frames)
        await(std::move(frame));
    QVERIFY2(threads < 30, qPrintable(QString::number(threads)));
}

void TestMedia::loadsNoMoreThanAreWanted()
{
    QList<QUrl> picked;
    for (int i = 0; i < 4; ++i) {
        const auto name = u"%1.jpg"_s.arg(i);
        write(name, QByteArray::number(i));
        picked.append(url(name));
    }
    picked.move(3, 0);
    const auto loaded = await(loadAttachmentsFromPicker(picked, 3));
    QByteArray order;
    for (const auto &attachment : loaded)
        order += attachment.data;
    QCOMPARE(order, "301"_ba);
}

void TestMedia::showsVideosUpright_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("isLater"); // than a tenth of a second
    QTest::newRow("upright.mp4") << QSize(96, 64) << true;
    QTest::newRow("with_sound.mp4") << QSize(96, 64) << true;
    QTest::newRow("upright.webm") << QSize(96, 64) << true;
    QTest::newRow("turned_90.mov") << QSize(64, 96) << true;
    QTest::newRow("turned_180.mov") << QSize(64, 96) << true;
    QTest::newRow("turned_270.mov") << QSize(64, 96) << true;
    QTest::newRow("one_frame.mp4") << QSize(96, 64) << false;
}

void TestMedia::showsVideosUpright()
{
#ifdef ZENVOR_WITH_MULTIMEDIA
    QFETCH(const QSize, size);
    QFETCH(const bool, isLater);
    const auto file = clip(QString::fromUtf8(QTest::currentDataTag()));
    using namespace std::chrono_literals;
    const auto frame = await(videoFrame(file, 100ms, 400, {}));
    QVERIFY(frame);
    QCOMPARE(frame->size(), size);
    QVERIFY(isRed(frame->pixelColor(size.width() / 2, 8)));
    QVERIFY(isBlue(frame->pixelColor(size.width() / 2, size.height() - 8)));
    QCOMPARE(isGreen(frame->pixelColor(frame->rect().center())), isLater);

    const auto small = await(videoFrame(file, 100ms, 48, {}));
    QCOMPARE(small->size(), size.scaled(48, 48, Qt::KeepAspectRatio));
    StopSource stop;
    stop.requestStop();
    QVERIFY(!await(videoFrame(file, 100ms, 400, stop.token())));
#else
    QVERIFY(!await(videoFrame(clip(u"upright.mp4"_s), {}, 400, {})));
#endif
}

void TestMedia::survivesWhatIsNoVideo_data()
{
    QTest::addColumn<QByteArray>("data");
    const auto whole = contentsOf(clip(u"upright.mp4"_s));
    QTest::newRow("cut short") << whole.first(whole.size() / 2);
    QTest::newRow("cut in its head") << whole.first(20);
    QTest::newRow("sound alone") << contentsOf(clip(u"sound_only.mp4"_s));
    QTest::newRow("text") << "not a video at all\n"_ba.repeated(100);
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("a picture") << picture("PNG").first(40);
    QTest::newRow("empty") << QByteArray();
}

void TestMedia::survivesWhatIsNoVideo()
{
    QFETCH(const QByteArray, data);
    const auto file = std::make_shared<AttachmentFile>(data, u"video/mp4"_s);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!await(videoThumbnailImage(file)));
    QVERIFY(timer.elapsed() < 2'500); // before the limit for those that hang
}

// Every part of the file cut off, and every byte of its head changed: all must end, most with 0.
void TestMedia::readsNoRotationOutOfBrokenFiles()
{
    const auto whole = contentsOf(clip(u"turned_90.mov"_s));
    const auto rotationOf = [](QByteArray data) {
        QBuffer buffer(&data);
        buffer.open(QIODevice::ReadOnly);
        return videoRotation(buffer);
    };
    QCOMPARE(rotationOf(whole), 90);
    QCOMPARE(rotationOf(contentsOf(clip(u"turned_180.mov"_s))), 180);
    QCOMPARE(rotationOf(contentsOf(clip(u"turned_270.mov"_s))), 270);
    QCOMPARE(rotationOf(contentsOf(clip(u"upright.webm"_s))), 0);
    const auto movie = whole.indexOf("moov") - 4;
    for (qsizetype length = 0; length < whole.size(); ++length)
        QCOMPARE(rotationOf(whole.first(length)), 0); // its head is at its end
    for (qsizetype i = 0; i < whole.size() - movie; ++i) {
        auto changed = whole.sliced(movie);
        changed[i] = '\xff';
        QVERIFY(rotationOf(changed) % 90 == 0);
    }
}

// At moments from before the first player is made to after the last.
void TestMedia::endsWithTheProcess()
{
    for (int delay = 0; delay < 150; delay += 10) {
        QProcess host;
        auto environment = QProcessEnvironment::systemEnvironment();
        // The decoder's own threads are not waited for, and hold a few bytes of the C library's.
        environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":detect_leaks=0"_s);
        host.setProcessEnvironment(environment);
        host.start(QStringLiteral(EXIT_HOST), {clip(u"with_sound.mp4"_s), QString::number(delay)});
        QVERIFY(host.waitForFinished());
        QCOMPARE(host.exitStatus(), QProcess::NormalExit);
        QCOMPARE(host.exitCode(), 0);
    }
}

void TestMedia::keepsOneFileOfAVideoForTheUserAlone()
{
    QTRY_VERIFY(temporaryFiles().isEmpty()); // of the tests before
    const auto data = contentsOf(clip(u"upright.webm"_s));
    auto file = std::make_shared<AttachmentFile>(data, u" Video/WebM "_s);
    QVERIFY(temporaryFiles().isEmpty()); // not before it is needed
    const auto path = await(file->path(AttachmentFile::Purpose::Thumbnail));
    QVERIFY(path);
    const QFileInfo written(*path);
    QVERIFY2(written.fileName().startsWith("zenvor-thumb-"_L1) && written.suffix() == "webm"_L1,
             qPrintable(*path));
    QCOMPARE(contentsOf(*path), data);
    QCOMPARE(written.permissions() & ~(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
    QCOMPARE(await(file->path(AttachmentFile::Purpose::Preview)), path);
    QCOMPARE(temporaryFiles().size(), 1);
    file.reset();
    QTRY_VERIFY(temporaryFiles().isEmpty());

    file = std::make_shared<AttachmentFile>(data, u"video/3gpp"_s);
    const auto preview = await(file->path(AttachmentFile::Purpose::Preview));
    QVERIFY(QFileInfo(*preview).fileName().startsWith("zenvor-preview-"_L1) && preview->endsWith(".mp4"_L1));
}

void TestMedia::writesNoVideoWithoutAFolder()
{
    const auto file = std::make_shared<AttachmentFile>("video"_ba, u"video/mp4"_s);
    qputenv("TMPDIR", "/nowhere");
    QVERIFY(!await(file->path(AttachmentFile::Purpose::Preview)));
    qputenv("TMPDIR", m_temporary.path().toLocal8Bit());
    QVERIFY(await(file->path(AttachmentFile::Purpose::Preview))); // tried again
}

void TestMedia::sweepsWhatIsOld()
{
    const auto make = [this](const QString &name, int hoursAgo) {
        QFile file(m_temporary.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("x");
        file.flush();
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-3600 * hoursAgo),
                                 QFileDevice::FileModificationTime));
    };
    make(u"zenvor-thumb-1.mp4"_s, 25);
    make(u"zenvor-preview-2.mov"_s, 25);
    make(u"zenvor-thumb-3.mp4"_s, 23);
    make(u"zenvor-other.mp4"_s, 25);
    make(u"zenvor-target"_s, 25);
    QVERIFY(
        QFile::link(m_temporary.filePath(u"zenvor-target"_s), m_temporary.filePath(u"zenvor-thumb-4.mp4"_s)));
    sweepAttachmentFiles();
    const QStringList left{u"zenvor-other.mp4"_s, u"zenvor-target"_s, u"zenvor-thumb-3.mp4"_s,
                           u"zenvor-thumb-4.mp4"_s};
    QTRY_COMPARE(temporaryFiles(), left);
    for (const auto &name : left)
        QFile::remove(m_temporary.filePath(name));
}

void TestMedia::listsAFolderTheNewestFirst()
{
    const QStringList files{u"new.png"_s, u"old.MP4"_s, u"older.jpeg"_s};
    for (qsizetype i = files.size() - 1; i >= 0; --i) {
        write(files.at(i), "x"_ba);
        QFile file(path(files.at(i)));
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addSecs(-60 * i), QFileDevice::FileModificationTime);
    }
    write(u"notes.txt"_s, "x"_ba);
    write(u".hidden.png"_s, "x"_ba);
    QDir(m_folder->path()).mkdir(u"b.png"_s);
    QDir(m_folder->path()).mkdir(u"a"_s);
    const auto folder = MediaFolder::read(m_folder->path());
    QVERIFY(folder.isReadable);
    QStringList names;
    for (const auto &entry : folder.entries) {
        names.append(QFileInfo(entry.path).fileName());
        QCOMPARE(entry.isFolder, names.size() <= 2);
        QCOMPARE(entry.isVideo, names.constLast() == "old.MP4"_L1);
        QCOMPARE(thumbnailPath(QUrl(thumbnailUrl(entry)).path().mid(1)), entry.path);
    }
    QCOMPARE(names, QStringList({u"a"_s, u"b.png"_s}) + files);
    QVERIFY(!MediaFolder::read(path(u"gone"_s)).isReadable);
    QVERIFY(!MediaFolder::read(path(u"notes.txt"_s)).isReadable);
}

void TestMedia::choosesInOrderUpToTheLimit()
{
    const QList<MediaEntry> entries{{u"/folder"_s, true, false, {}},
                                    {u"/1.png"_s, false, false, {}},
                                    {u"/2.png"_s, false, false, {}},
                                    {u"/3.mp4"_s, false, true, {}}};
    MediaListModel two(2);
    two.setEntries(entries);
    for (const int row : {0, 3, 1, 2, -1, 4}) // a folder, two files, one too many, nothing
        two.toggle(row);
    QCOMPARE(two.selected(), QStringList({u"/3.mp4"_s, u"/1.png"_s}));
    two.toggle(3);
    two.setEntries({}); // another folder
    two.setEntries(entries);
    two.toggle(2);
    QCOMPARE(two.selected(), QStringList({u"/1.png"_s, u"/2.png"_s}));
    const int role = int(two.roleNames().key("selection"_ba));
    QCOMPARE(two.index(2).data(role).toInt(), 2);
    QCOMPARE(two.index(3).data(role).toInt(), 0);

    MediaListModel one(1);
    one.setEntries(entries);
    one.toggle(1);
    one.toggle(2);
    QCOMPARE(one.selected(), QStringList({u"/2.png"_s})); // in the place of the other
}

QTEST_MAIN(TestMedia)

#include "tst_media.moc"
