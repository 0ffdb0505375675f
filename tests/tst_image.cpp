#include "platform/image.h"
#include "platform/image_cost.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstdio>

using namespace zenvor;
using namespace Qt::StringLiterals;

namespace {

template<typename T>
QByteArray big(T number)
{
    const T value = qToBigEndian(number);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

template<typename T>
QByteArray little(T number)
{
    const T value = qToLittleEndian(number);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

QByteArray written(const QImage &image, const char *format, int quality = -1, bool isProgressive = false)
{
    QByteArray result;
    QBuffer buffer(&result);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setProgressiveScanWrite(isProgressive);
    return writer.write(image) ? result : QByteArray();
}

QImage filled(QSize size, QColor color, QImage::Format format = QImage::Format_RGB32)
{
    QImage result(size, format);
    result.fill(color);
    return result;
}

// Red and green above blue and white.
QImage quarters(QSize size)
{
    QImage result = filled(size, Qt::white);
    QPainter painter(&result);
    const QSize half = size / 2;
    painter.fillRect(QRect(QPoint(0, 0), half), Qt::red);
    painter.fillRect(QRect(QPoint(half.width(), 0), half), Qt::green);
    painter.fillRect(QRect(QPoint(0, half.height()), half), Qt::blue);
    return result;
}

QImage withColorTable(QSize size)
{
    QImage result(size, QImage::Format_Indexed8);
    result.setColorTable({qRgb(255, 0, 0), qRgb(0, 0, 255)});
    result.fill(1);
    return result;
}

// The letters of the quarters' colours, in the order of reading.
QString seenQuarters(const QImage &image)
{
    QString result;
    for (const int y : {image.height() / 4, image.height() * 3 / 4}) {
        for (const int x : {image.width() / 4, image.width() * 3 / 4}) {
            const QColor color = image.pixelColor(x, y);
            const int lit = (color.red() > 128) + 2 * (color.green() > 128) + 4 * (color.blue() > 128);
            result += u"-RG?B??W"_s[lit];
        }
    }
    return result;
}

QByteArray chunk(const QByteArray &type, const QByteArray &content)
{
    quint32 crc = 0xffffffff;
    for (const char c : type + content) {
        crc ^= quint8(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return big(quint32(content.size())) + type + content + big(~crc);
}

QByteArray zeros(qsizetype count)
{
    return qCompress(QByteArray(count, '\0')).mid(4);
}

// A grey PNG of one bit a pixel.
QByteArray png(quint32 width, quint32 height, const QByteArray &data, const QByteArray &before = {})
{
    return "\x89PNG\r\n\x1a\n" + chunk("IHDR"_ba, big(width) + big(height) + "\1\0\0\0\0"_ba) + before
        + chunk("IDAT"_ba, data) + chunk("IEND"_ba, {});
}

QByteArray texts(const QByteArray &type, const QByteArray &header, int count)
{
    return chunk(type, header + zeros(7'900'000)).repeated(count);
}

QByteArray segment(char marker, const QByteArray &content)
{
    return '\xff' + QByteArray(1, marker) + big(quint16(content.size() + 2)) + content;
}

QByteArray scan(const QByteArray &components, const QByteArray &spectrum)
{
    QByteArray header = QByteArray(1, char(components.size()));
    for (const char component : components)
        header += component + "\0"_ba;
    return segment('\xda', header + spectrum) + "\xc0"_ba;
}

// A JPEG of three components that says next to nothing in each of its scans.
QByteArray jpeg(char kind, quint16 width, quint16 height, const QByteArray &scans, char sampling = '\x11')
{
    const QByteArray codes = "\1\1"_ba + QByteArray(14, '\0');
    return "\xff\xd8"_ba + segment('\xdb', '\0' + QByteArray(64, '\1'))
        + segment('\xc4', '\0' + codes + "\0\1"_ba) + segment('\xc4', '\x10' + codes + "\0\xe0"_ba)
        + segment(kind, '\x08' + big(height) + big(width) + "\3\1"_ba + sampling + "\0\2\x11\0\3\x11\0"_ba)
        + scans + "\xff\xd9"_ba;
}

// A canvas whose first frame is one pixel of colour 0, and the second one of colour 1.
QByteArray gif(quint16 width, quint16 height)
{
    const QByteArray frame = "\x2c\0\0\0\0\1\0\1\0\0\2\2"_ba;
    return "GIF89a" + little(width) + little(height) + "\x80\0\0\xff\0\0\0\0\xff"_ba + frame + "\x44\1\0"_ba
        + frame + "\x4c\1\0\x3b"_ba;
}

QByteArray bmpInRuns(qint32 width, qint32 height)
{
    return "BM" + little(quint32(1080)) + little(0) + little(1078) + little(40) + little(width)
        + little(height) + little(quint16(1)) + little(quint16(8)) + little(1) + QByteArray(12, '\0')
        + little(256) + little(0) + QByteArray(1024, '\x7f') + "\0\1"_ba;
}

QByteArray tiff(quint32 samples)
{
    const QByteArray pixels = zeros(10000 * qsizetype(samples));
    const auto entry = [](quint16 tag, quint32 value) {
        return little(tag) + little(quint16(4)) + little(quint32(1)) + little(value);
    };
    return "II*\0"_ba + little(8) + little(quint16(9)) + entry(256, 100) + entry(257, 100) + entry(258, 8)
        + entry(259, 8) + entry(262, 1) + entry(273, 122) + entry(277, samples) + entry(278, 100)
        + entry(279, quint32(pixels.size())) + little(0) + pixels;
}

const QByteArray &hundredMegapixels()
{
    static const QByteArray result =
        written(filled({12240, 8160}, Qt::gray, QImage::Format_Grayscale8), "jpeg");
    return result;
}

// What this program does when it is started with "--decode": it decodes its standard input, without the
// allocation limit of Qt, and prints the size of the picture and the most memory, in kB, that it held at a
// time.
int decodeStandardInput()
{
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        return 1;
    QImageReader::setAllocationLimit(0);
    const QImage image = decodeImage(input.readAll(), 400).value_or(QImage());
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 1;
    const QByteArray text = status.readAll();
    const QByteArray peak = text.mid(text.indexOf("VmHWM:") + 6).simplified().split(' ').value(0);
    std::printf("%dx%d %s", image.width(), image.height(), peak.constData());
    return 0;
}

// The size and the memory; nothing if it takes longer than five seconds.
QByteArrayList decodedInAnotherProcess(const QByteArray &data)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {u"--decode"_s});
    process.write(data);
    process.closeWriteChannel();
    if (!process.waitForFinished(5000) || process.exitCode() != 0)
        return {};
    return process.readAllStandardOutput().split(' ');
}

} // namespace

class TestImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodesByContent_data();
    void decodesByContent();
    void refusesWhatIsNoPicture_data();
    void refusesWhatIsNoPicture();
    void makesNoSideLongerThanAsked_data();
    void makesNoSideLongerThanAsked();
    void standsUprightAsItsOrientationMarkSays();
    void staysWithinMemoryAndTime_data();
    void staysWithinMemoryAndTime();
    void believesNoChunkOfAPngThatClaimsTooMuch_data();
    void believesNoChunkOfAPngThatClaimsTooMuch();
    void isNotBoundByTheApplicationsAllocationLimit_data();
    void isNotBoundByTheApplicationsAllocationLimit();
    void makesGreyOfFineBlackAndWhite();
    void encodesWithTheQualityThatIsAsked_data();
    void encodesWithTheQualityThatIsAsked();
    void showsWhiteThroughWhatIsTransparent_data();
    void showsWhiteThroughWhatIsTransparent();
    void keepsTheTextsOfAnImageToItself_data();
    void keepsTheTextsOfAnImageToItself();
    void encodesOnlyWhatAJpegCanHold();
};

void TestImage::decodesByContent_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("seen");
    for (const char *format : {"jpeg", "png", "bmp", "webp", "tiff", "heic", "avif"}) {
        if (QImageWriter::supportedImageFormats().contains(format))
            QTest::newRow(format) << written(quarters({80, 40}), format, 90) << u"RGBW"_s;
    }
    QTest::newRow("progressive JPEG") << written(quarters({80, 40}), "jpeg", 90, true) << u"RGBW"_s;
    QTest::newRow("PNG with a colour table") << written(withColorTable({80, 40}), "png") << u"BBBB"_s;
    QTest::newRow("first frame of a GIF") << gif(1, 1) << u"RRRR"_s;
}

void TestImage::decodesByContent()
{
    QFETCH(const QByteArray, data);
    const auto image = decodeImage(data, 40);
    QVERIFY(image);
    QTEST(seenQuarters(*image), "seen");
}

void TestImage::refusesWhatIsNoPicture_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << "BMW builds cars"_ba;
    QTest::newRow("vector picture") << R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)"_ba;
    QTest::newRow("video") << big(quint32(24)) + "ftypisom\0\0\0\0isommp42"_ba;
    QTest::newRow("brands that end before they begin") << big(quint32(1)) + "ftypheic\0\0\0\0"_ba;
    QTest::newRow("a segment beyond the end") << "\xff\xd8\xff\xe1\xff\xff"_ba;
    QTest::newRow("a scan of no picture") << "\xff\xd8"_ba + scan("\1\2\3"_ba, "\0\0\0"_ba);
    QTest::newRow("directory beyond the end") << "II*\0\xff\xff\xff\xff"_ba;
    const QByteArray photo = written(quarters({80, 40}), "png");
    QTest::newRow("PNG without its end") << photo.first(photo.size() - 40);
    QTest::newRow("RIFF") << "RIFF"_ba;
}

void TestImage::refusesWhatIsNoPicture()
{
    QFETCH(const QByteArray, data);
    QVERIFY(!decodeImage(data, 400));
}

void TestImage::makesNoSideLongerThanAsked_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("longestSide");
    QTest::addColumn<QSize>("size");
    const auto jpegOf = [](int width, int height) {
        return written(filled({width, height}, Qt::red), "jpeg");
    };
    QTest::newRow("wide") << jpegOf(1600, 1200) << 400 << QSize(400, 300);
    QTest::newRow("by no eighth") << jpegOf(1000, 1000) << 999 << QSize(999, 999);
    QTest::newRow("small enough") << jpegOf(30, 40) << 400 << QSize(30, 40);
    QTest::newRow("a line") << jpegOf(10000, 3) << 400 << QSize(400, 1);
    QTest::newRow("a column with a colour table")
        << written(withColorTable({3, 10000}), "png") << 400 << QSize(1, 400);
    QTest::newRow("no side at all") << jpegOf(30, 40) << 0 << QSize(1, 1);
    QTest::newRow("a canvas larger than its frame") << gif(400, 300) << 200 << QSize(200, 150);
    QTest::newRow("a canvas without a size") << gif(0, 0) << 200 << QSize(1, 1);
}

void TestImage::makesNoSideLongerThanAsked()
{
    QFETCH(const QByteArray, data);
    QFETCH(const int, longestSide);
    const auto image = decodeImage(data, longestSide);
    QVERIFY(image);
    QTEST(image->size(), "size");
}

void TestImage::standsUprightAsItsOrientationMarkSays()
{
    QByteArray data = written(quarters({160, 80}), "jpeg", 90);
    data.insert(2,
                segment('\xe1',
                        "Exif\0\0MM\0*"_ba + big(quint32(8)) + big(quint16(1)) + big(quint16(0x112))
                            + big(quint16(3)) + big(quint32(1)) + big(quint16(6)) + big(quint16(0))
                            + big(quint32(0))));
    const auto image = decodeImage(data, 40);
    QVERIFY(image);
    QCOMPARE(image->size(), QSize(20, 40));
    QCOMPARE(seenQuarters(*image), u"BRWG"_s);
}

void TestImage::staysWithinMemoryAndTime_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<int>("megabytes");
    const QByteArray none = "0x0"_ba;
    const QByteArray all = scan("\1\2\3"_ba, "\0\0\0"_ba);
    const QByteArray each =
        scan("\1"_ba, "\0\x3f\0"_ba) + scan("\2"_ba, "\0\x3f\0"_ba) + scan("\3"_ba, "\0\x3f\0"_ba);
    const QByteArray more = scan("\1"_ba, "\1\x3f\0"_ba).repeated(1000);

    QTest::newRow("photo of 100 megapixels") << hundredMegapixels() << "400x266"_ba << 40;
    QTest::newRow("JPEG that claims 3600 megapixels")
        << jpeg('\xc0', 60000, 60000, scan("\1\2\3"_ba, "\0\x3f\0"_ba)) << none << 20;
    QTest::newRow("progressive one of 200 megapixels") << jpeg('\xc2', 20000, 10000, all) << none << 20;
    QTest::newRow("progressive one of 100 megapixels, with coarse colours")
        << jpeg('\xc2', 12240, 8160, all, '\x22') << "400x266"_ba << 340;
    QTest::newRow("one in three scans") << jpeg('\xc0', 20000, 10000, each) << none << 20;
    QTest::newRow("one in a thousand scans") << jpeg('\xc2', 8000, 8000, all + more) << none << 20;

    QTest::newRow("PNG of zeros") << png(50000, 5000, zeros(31'255'000)) << none << 20;
    QTest::newRow("PNG that claims no end") << png(0x7fffffff, 0x7fffffff, zeros(9)) << none << 20;
    const QByteArray packed = texts("zTXt"_ba, "a\0\0"_ba, 20);
    QTest::newRow("PNG with packed texts") << png(1, 1, zeros(2), packed) << none << 20;
    const QByteArray packedUnicode = texts("iTXt"_ba, "a\0\1\0\0\0"_ba, 20);
    QTest::newRow("in Unicode") << png(1, 1, zeros(2), packedUnicode) << none << 20;
    const QByteArray photoshop = chunk("iTXt"_ba, "XML:com.adobe.xmp\0\0\0\0\0"_ba + QByteArray(90000, 'x'));
    QTest::newRow("PNG with an editor's texts") << png(1, 1, zeros(2), photoshop) << "1x1"_ba << 20;

    QTest::newRow("GIF canvas") << gif(15000, 10000) << none << 20;
    QTest::newRow("BMP in runs") << bmpInRuns(15000, 10000) << none << 20;
    if (QImageReader::supportedImageFormats().contains("tiff")) {
        QTest::newRow("TIFF of one sample") << tiff(1) << "100x100"_ba << 20;
        QTest::newRow("TIFF of many samples") << tiff(10000) << none << 20;
    }
}

void TestImage::staysWithinMemoryAndTime()
{
    QFETCH(const QByteArray, data);
    QFETCH(const QByteArray, size);
    QFETCH(const int, megabytes);
    const auto idle = decodedInAnotherProcess({});
    const auto busy = decodedInAnotherProcess(data);
    QCOMPARE(busy.value(0), size);
    const qint64 taken = busy.value(1).toLongLong() - idle.value(1).toLongLong();
    QVERIFY2(taken < data.size() / 1024 * 3 + megabytes * 1024, qPrintable(u"%1 kB"_s.arg(taken)));
}

void TestImage::believesNoChunkOfAPngThatClaimsTooMuch_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<bool>("isAffordable");

    const QByteArray gigabyte = big(quint32(1 << 30));
    const QByteArray whole = png(1, 1, zeros(2));
    QTest::newRow("text in Unicode") << png(1, 1, zeros(2), gigabyte + "iTXt"_ba) << false;
    QTest::newRow("colours") << png(1, 1, zeros(2), gigabyte + "iCCP"_ba) << false;
    QTest::newRow("last bytes of the file") << whole + gigabyte + "tEXt"_ba << false;
    QTest::newRow("pixels, which are read piece by piece")
        << whole.first(whole.indexOf("IDAT") - 4) + gigabyte + "IDAT"_ba << true;
    QTest::newRow("long text that is there")
        << png(1, 1, zeros(2), chunk("tEXt"_ba, QByteArray(1 << 20, 'a'))) << true;
}

void TestImage::believesNoChunkOfAPngThatClaimsTooMuch()
{
    QFETCH(QByteArray, data);
    // The memory is asked for, but never filled: no measurement shows it.
    QTEST(isHeaderAffordable(data, "png"), "isAffordable");
}

void TestImage::isNotBoundByTheApplicationsAllocationLimit_data()
{
    QTest::addColumn<QByteArray>("data");
    const QSize size(2000, 1500);
    QTest::newRow("photo of 100 megapixels") << hundredMegapixels();
    QTest::newRow("progressive photo") << written(filled(size, Qt::red), "jpeg", -1, true);
    QTest::newRow("screenshot") << written(filled(size, Qt::red), "png");
    QTest::newRow("PNG with a colour table") << written(withColorTable(size), "png");
    QTest::newRow("PNG of 16 bits") << written(filled(size, Qt::red, QImage::Format_RGBA64), "png");
}

void TestImage::isNotBoundByTheApplicationsAllocationLimit()
{
    QFETCH(const QByteArray, data);
    const auto restore =
        qScopeGuard([limit = QImageReader::allocationLimit()] { QImageReader::setAllocationLimit(limit); });
    QImageReader::setAllocationLimit(1);
    const auto image = decodeImage(data, 1000);
    QVERIFY(image);
    QCOMPARE(image->width(), 1000);
    QCOMPARE(QImageReader::allocationLimit(), 1);
}

void TestImage::makesGreyOfFineBlackAndWhite()
{
    QImage stripes(400, 400, QImage::Format_Mono);
    for (int y = 0; y < stripes.height(); ++y)
        std::fill_n(stripes.scanLine(y), stripes.bytesPerLine(), uchar(0x55));
    const auto image = decodeImage(written(stripes, "png"), 100);
    QVERIFY(image);
    QVERIFY(std::abs(image->pixelColor(50, 50).lightness() - 128) < 30);
}

void TestImage::encodesWithTheQualityThatIsAsked_data()
{
    QTest::addColumn<double>("quality");
    QTest::addColumn<int>("percent");
    QTest::newRow("one that has no exact number") << 0.29 << 29;
    QTest::newRow("less than least") << -3.0 << 0;
    QTest::newRow("more than most") << double(INFINITY) << 100;
    QTest::newRow("no number") << double(NAN) << 72;
}

void TestImage::encodesWithTheQualityThatIsAsked()
{
    QFETCH(const double, quality);
    QFETCH(const int, percent);
    const QImage image = quarters({50, 30});
    QCOMPARE(encodeJpeg(image, quality), written(image, "jpeg", percent));
}

void TestImage::showsWhiteThroughWhatIsTransparent_data()
{
    QTest::addColumn<QImage>("image");
    const QColor red(255, 0, 0, 128);
    QImage image = filled({16, 16}, red, QImage::Format_ARGB32);
    QTest::newRow("straight") << image;
    image.setDevicePixelRatio(2);
    QTest::newRow("for a sharp screen") << image;
    QImage table = withColorTable({16, 16});
    table.setColor(1, red.rgba());
    QTest::newRow("in a colour table") << table;
}

void TestImage::showsWhiteThroughWhatIsTransparent()
{
    QFETCH(const QImage, image);
    const QImage seen = QImage::fromData(encodeJpeg(image, 1).value_or(QByteArray()));
    QCOMPARE(seen.size(), QSize(16, 16));
    for (const QPoint point : {QPoint(2, 2), QPoint(14, 14)}) {
        const QColor color = seen.pixelColor(point);
        QVERIFY2(color.red() > 250 && std::abs(color.green() - 127) < 6 && std::abs(color.blue() - 127) < 6,
                 qPrintable(color.name()));
    }
}

void TestImage::keepsTheTextsOfAnImageToItself_data()
{
    QTest::addColumn<QImage>("image");
    const QImage image = quarters({31, 17}); // whose lines end in padding where a pixel has less than 32 bits
    QTest::newRow("RGB32") << image;
    QTest::newRow("grey") << image.convertToFormat(QImage::Format_Grayscale8);
    QTest::newRow("colour table") << image.convertToFormat(QImage::Format_Indexed8);
    QImage colored = image;
    colored.setColorSpace(QColorSpace::DisplayP3);
    QTest::newRow("in a colour space") << colored;
}

void TestImage::keepsTheTextsOfAnImageToItself()
{
    QFETCH(const QImage, image);
    QImage told = image;
    told.setText(u"Author"_s, u"Somebody"_s);
    const auto data = encodeJpeg(told, 0.72);
    QVERIFY(data && !data->contains("Somebody"));
    QCOMPARE(data, encodeJpeg(image, 0.72));
}

void TestImage::encodesOnlyWhatAJpegCanHold()
{
    QVERIFY(!encodeJpeg(QImage(), 0.72));
    QVERIFY(!encodeJpeg(filled({65501, 1}, Qt::red), 0.72));
    QVERIFY(encodeJpeg(filled({1, 65500}, Qt::red), 0.72));
}

int main(int argc, char **argv)
{
    if (argc == 2 && QByteArrayView(argv[1]) == "--decode")
        return decodeStandardInput();
    const QGuiApplication application(argc, argv);
    TestImage test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_image.moc"
