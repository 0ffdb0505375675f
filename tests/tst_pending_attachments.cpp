#include "facade/pending_attachments.h"

#include <zenvor/zenvor.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QUrl>

#include <functional>

#include <sys/stat.h>

using namespace zenvor;
using namespace Qt::StringLiterals;

namespace {

QImage picture(QSize size = {8, 4})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

QByteArray encoded(const QImage &image, const char *format)
{
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

const auto png = encoded(picture(), "PNG");
const auto noPicture = "It was like this when I got here."_ba;

} // namespace

class TestPendingAttachments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesDataOfTheAllowedTypes_data();
    void takesDataOfTheAllowedTypes();
    void takesFilesOfThisMachine_data();
    void takesFilesOfThisMachine();
    void encodesAPictureAsJpeg();
    void keepsNoMoreOfAPictureThanAScreenShows();
    void emptiesTheListBeforeItSets_data();
    void emptiesTheListBeforeItSets();
    void changesNothingFromAnotherThread();

private:
    QUrl file(const QString &name, const QByteArray &contents);

    QTemporaryDir m_folder;
};

QUrl TestPendingAttachments::file(const QString &name, const QByteArray &contents)
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        qFatal("The file cannot be written.");
    return QUrl::fromLocalFile(file.fileName());
}

void TestPendingAttachments::takesDataOfTheAllowedTypes_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QString>("expected"); // "kind type", or nothing
    const auto row = [](const char *name, const QByteArray &data, const QString &mimeType,
                        const QString &expected) {
        QTest::newRow(name) << data << mimeType << expected;
    };
    row("blanks and capitals", png, u" \tIMAGE/PNG\n"_s, u"screenshot image/png"_s);
    row("parameter", png, u"image/png; q=1"_s, {});
    row("another picture type", png, u"image/gif"_s, {});
    row("picture by a wrong name", png, u"image/webp"_s, u"screenshot image/webp"_s);
    row("WebP", encoded(picture(), "WEBP"), u"image/webp"_s, u"screenshot image/webp"_s);
    row("no picture", noPicture, u"image/png"_s, {});
    row("no data", {}, u"image/png"_s, {});
    row("QuickTime", noPicture, u"video/quicktime"_s, u"video video/quicktime"_s);
    row("WebM", noPicture, u"video/webm"_s, u"video video/webm"_s);
    row("video without data", {}, u"video/mp4"_s, {});
}

void TestPendingAttachments::takesDataOfTheAllowedTypes()
{
    QFETCH(const QByteArray, data);
    QFETCH(const QString, mimeType);
    QFETCH(const QString, expected);
    PendingAttachments attachments;
    QCOMPARE(attachments.add(data, mimeType), !expected.isEmpty());
    const auto taken = attachments.take();
    QCOMPARE(taken.isEmpty(), expected.isEmpty());
    if (taken.isEmpty())
        return;
    const auto &attachment = taken.first();
    QCOMPARE(attachment.kind + u' ' + attachment.mimeType, expected);
    QVERIFY(attachment.data.constData() == data.constData()); // shared, not copied
    QCOMPARE(attachment.previewImage.size(), attachment.kind == "video"_L1 ? QSize(0, 0) : QSize(8, 4));
    QVERIFY(attachments.take().isEmpty());
}

void TestPendingAttachments::takesFilesOfThisMachine_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<std::optional<QString>>("mimeType");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QUrl &url, const QString &expected,
                        std::optional<QString> mimeType = {}) {
        QTest::newRow(name) << url << mimeType << expected;
    };
    const auto pipe = m_folder.filePath(u"pipe.png"_s);
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    row("picture", file(u"a.png"_s, png), u"image/png"_s);
    row("capitals", file(u"clip.MOV"_s, noPicture), u"video/quicktime"_s);
    row("no extension", file(u"a"_s, png), u"image/jpeg"_s);
    row("text", file(u"notes.txt"_s, noPicture), {});
    row("given type", file(u"b.png"_s, noPicture), u"video/mp4"_s, u"video/mp4"_s);
    row("empty", file(u"empty.mp4"_s, {}), {});
    row("missing", QUrl::fromLocalFile(m_folder.filePath(u"missing.mp4"_s)), {});
    row("folder", QUrl::fromLocalFile(m_folder.path()), {});
    row("pipe", QUrl::fromLocalFile(pipe), {});
    row("device", QUrl(u"file:///dev/zero"_s), {}, u"video/mp4"_s);
    row("nothing but an extension", file(u".mp4"_s, noPicture), {});
    auto elsewhere = file(u"d.png"_s, png);
    elsewhere.setHost(u"other.example"_s);
    row("another machine's", elsewhere, {});
    row("remote", QUrl(u"http://127.0.0.1/a.png"_s), {});
    row("no URL", {}, {});
}

void TestPendingAttachments::takesFilesOfThisMachine()
{
    QFETCH(const QUrl, url);
    QFETCH(const std::optional<QString>, mimeType);
    QFETCH(const QString, expected);
    PendingAttachments attachments;
    QCOMPARE(attachments.addFile(url, mimeType), !expected.isEmpty());
    const auto taken = attachments.take();
    QCOMPARE(taken.isEmpty() ? QString() : taken.first().mimeType, expected);
}

void TestPendingAttachments::encodesAPictureAsJpeg()
{
    PendingAttachments attachments;
    const auto image = picture();
    QVERIFY(attachments.add(image, 0.5));
    QVERIFY(!attachments.add(QImage(), 0.5));
    QVERIFY(attachments.add(picture({3000, 10}), 0.5));
    const auto taken = attachments.take();
    QCOMPARE(taken.size(), 2);
    QCOMPARE(taken.first().mimeType, u"image/jpeg"_s);
    QCOMPARE(taken.first().previewImage, image);
    QCOMPARE(taken.last().previewImage.width(), 1024);
    QCOMPARE(QImage::fromData(taken.first().data, "JPEG").size(), image.size());
}

void TestPendingAttachments::keepsNoMoreOfAPictureThanAScreenShows()
{
    PendingAttachments attachments;
    QVERIFY(attachments.add(encoded(picture({4000, 1000}), "PNG"), u"image/png"_s));
    QCOMPARE(attachments.take().first().previewImage.size(), QSize(1024, 256)); // the least that is kept
}

void TestPendingAttachments::emptiesTheListBeforeItSets_data()
{
    using Set = std::function<int(PendingAttachments &)>;
    QTest::addColumn<Set>("set");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("left");
    const auto row = [](const char *name, int result, int left, const Set &set) {
        QTest::newRow(name) << set << result << left;
    };
    const auto good = file(u"good.png"_s, png);
    const auto missing = QUrl::fromLocalFile(m_folder.filePath(u"no.png"_s));
    const auto text = file(u"notes.txt"_s, noPicture);
    const auto pngType = u"image/png"_s;
    row("picture", 1, 1, [](auto &list) { return list.set(picture(), 0.72); });
    row("bad data", 0, 0, [=](auto &list) { return list.set(noPicture, pngType); });
    row("no data", 1, 0, [=](auto &list) { return list.set(QByteArray(), pngType); });
    row("no data of no type", 1, 0, [](auto &list) { return list.set(QByteArray(), u"nothing"_s); });
    row("file", 1, 1, [=](auto &list) { return list.setFile(good, std::nullopt); });
    row("missing file", 0, 0, [=](auto &list) { return list.setFile(missing, std::nullopt); });
    row("files", 2, 2, [=](auto &list) { return list.setFiles({good, missing, text, good}); });
    row("added to", 1, 2, [=](auto &list) { return list.add(png, pngType); });
}

void TestPendingAttachments::emptiesTheListBeforeItSets()
{
    QFETCH(const std::function<int(PendingAttachments &)>, set);
    PendingAttachments attachments;
    QVERIFY(attachments.add(noPicture, u"video/mp4"_s));
    QTEST(set(attachments), "result");
    QTEST(int(attachments.take().size()), "left");
}

void TestPendingAttachments::changesNothingFromAnotherThread()
{
    const auto good = file(u"good.png"_s, png);
    int accepted = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&accepted, good] {
        auto &zenvor = Zenvor::shared();
        accepted += zenvor.setPendingAttachment(picture(), 1) + zenvor.addPendingAttachment(picture(), 1);
        accepted += zenvor.setPendingAttachmentData({}, u"image/png"_s);
        accepted += zenvor.addPendingAttachmentData(png, u"image/png"_s);
        accepted += zenvor.setPendingAttachmentFile(good) + zenvor.addPendingAttachmentFile(good);
        accepted += zenvor.setPendingAttachmentFiles({good});
    }));
    thread->start();
    QVERIFY(thread->wait());
    QCOMPARE(accepted, 0);
}

QTEST_MAIN(TestPendingAttachments)
#include "tst_pending_attachments.moc"
