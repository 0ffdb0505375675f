// What pictures and videos cost the host: memory and standstill while a large video is read, the grid of a
// folder with a thousand photos, the thumbnail of a video. Each in a process of its own.
#include "host_window.h"
#include "measured_process.h"
#include "media/attachment_file.h"
#include "media/attachment_loading.h"
#include "platform/image.h"
#include "process_status.h"
#include "screens.h"
#include "table.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

namespace {

using namespace zenvor;
using namespace Qt::StringLiterals;

void print(const char *name, double value)
{
    std::printf("%s %f\n", name, value);
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return file.readAll();
}

// Without the naps of QTest, which would count as standstill.
void runUntil(const bool &hasEnded)
{
    while (!hasEnded)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// From now on the peak counts anew.
void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

void readVideo(const QString &path, bool isBaseline)
{
    std::optional<ReportUploadAttachment> attachment;
    bool hasEnded = false;
    bench::Stalls stalls;
    QTest::qWait(200);
    stalls.take();
    forgetPeak();
    const double before = bench::memoryMiB("VmRSS:");
    QElapsedTimer timer;
    timer.start();
    if (isBaseline) {
        attachment = ReportUploadAttachment{contentsOf(path), {}, {}};
        QCoreApplication::processEvents();
    } else {
        const auto read = [&]() -> Task<> {
            const QUrl url = QUrl::fromLocalFile(path);
            auto loaded = co_await loadAttachment(url);
            attachment = std::move(loaded);
            hasEnded = true;
        };
        const auto running = read(); // the function outlives it
        runUntil(hasEnded);
    }
    print("wall ms", double(timer.nsecsElapsed()) / 1e6);
    print("stall ms", stalls.take());
    print("memory over the file, MiB",
          bench::memoryMiB("VmHWM:") - before - double(attachment->data.size()) / 1024 / 1024);
}

// A grid of cells without pictures is the baseline.
QQuickItem *openGrid(QQuickWindow *window, QQmlEngine *engine, bool isBaseline)
{
    if (isBaseline) {
        QQmlComponent component(engine);
        component.setData(R"(
            import QtQuick
            GridView {
                objectName: "mediaPickerGrid"; width: 390; height: 742; cellWidth: 130; cellHeight: 130
                cacheBuffer: 0; clip: true; model: 1000
                delegate: Rectangle { width: 128; height: 128; color: Qt.hsva(index % 30 / 30, 0.5, 0.8, 1) }
            })",
                          {});
        component.createWithInitialProperties({{u"parent"_s, QVariant::fromValue(window->contentItem())}});
    } else {
        Zenvor::shared().present();
        bench::waitFor(window, "categoryDialog"_L1);
        QTest::qWait(300); // its animation
        bench::click(window, "suggestImprovementRow"_L1);
        bench::waitFor(window, "feedbackSheet"_L1);
        QTest::qWait(400);
        bench::click(window, "addMediaButton"_L1);
        bench::waitFor(window, "mediaPickerGrid"_L1);
    }
    auto *grid = bench::find(window->contentItem(), "mediaPickerGrid"_L1);
    if (!QTest::qWaitFor([grid] { return grid->property("count").toInt() == 1000; }, 10'000))
        qFatal("the folder is not listed");
    QTest::qWait(500);
    return grid;
}

void scrollGrid(double step, bool isBaseline)
{
    const bench::HostWindow host;
    if (!QTest::qWaitForWindowActive(host.window()))
        qFatal("the window is not active");
    setReportServiceUrl(QUrl(u"http://127.0.0.1:9"_s)); // nobody is there
    Zenvor::shared().configure(u"token"_s, false);
    QTest::qWait(300);
    QQmlEngine engine;
    const double before = bench::memoryMiB("VmRSS:");
    auto *grid = openGrid(host.window(), &engine, isBaseline);
    bench::Stalls stalls;
    QTest::qWait(100);
    stalls.take();
    const double end = grid->property("contentHeight").toReal() - grid->height();
    for (double y = 0; y < end; y += step) {
        grid->setProperty("contentY", y);
        QTest::qWait(16);
        print("stall ms", stalls.take());
    }
    print("memory MiB", bench::memoryMiB("VmHWM:") - before);
}

void makeThumbnails(bool isBaseline)
{
    const auto video = contentsOf(QStringLiteral(BENCH_VIDEO));
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    QImage image(390, 844, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(&buffer, "JPEG");
    for (int i = 0; i < 6; ++i) {
        bench::Stalls stalls;
        bool hasEnded = false;
        QElapsedTimer timer;
        timer.start();
        const auto make = [&]() -> Task<> {
            const auto file = std::make_shared<AttachmentFile>(video, u"video/mp4"_s);
            const auto thumbnail = co_await videoThumbnailImage(file);
            hasEnded = true;
        };
        if (isBaseline) {
            decodeImage(jpeg, 400);
        } else {
            const auto running = make(); // the function outlives it
            runUntil(hasEnded);
            print(i == 0 ? "stall first, ms" : "stall later, ms", stalls.take());
        }
        print(i == 0 ? "first, ms" : "later, ms", double(timer.nsecsElapsed()) / 1e6);
    }
}

bench::Figures runProcess(const QStringList &arguments, const QString &home, int times)
{
    bench::Figures figures;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, home);
    environment.remove(u"XDG_CONFIG_HOME"_s);
    for (int i = 0; i < times; ++i)
        bench::runProcess(figures, arguments, environment);
    return figures;
}

void compare(const char *title, const QStringList &arguments, const QString &home, int times)
{
    bench::printHeader(title);
    for (const auto *kind : {"baseline", "library"}) {
        const auto figures = runProcess(arguments + QStringList{QString::fromLatin1(kind)}, home, times);
        for (auto row = figures.begin(); row != figures.end(); ++row)
            bench::printRow(qPrintable(QString::fromLatin1(kind) + u": "_s + row.key()), row.value());
    }
}

// A thousand names for one photo of twelve megapixels.
void makePhotos(const QString &folder, int side)
{
    QImage photo(side * 4, side * 3, QImage::Format_RGB32);
    for (int y = 0; y < photo.height(); ++y) {
        for (int x = 0; x < photo.width(); ++x)
            photo.setPixel(x, y, qRgb(x * 255 / photo.width(), y * 255 / photo.height(), (x ^ y) & 0x3f));
    }
    QDir().mkpath(folder);
    if (!photo.save(folder + u"/0.jpg"_s))
        qFatal("there is no photo");
    for (int i = 1; i < 1000; ++i)
        QFile::link(folder + u"/0.jpg"_s, folder + u"/%1.jpg"_s.arg(i));
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QGuiApplication::setDesktopFileName(u"com.example.bench"_s);
    const QGuiApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    const bool isBaseline = arguments.constLast() == "baseline"_L1;
    if (arguments.value(1) == "--read"_L1)
        readVideo(arguments.at(2), isBaseline);
    else if (arguments.value(1) == "--grid"_L1)
        scrollGrid(arguments.at(2).toDouble(), isBaseline);
    else if (arguments.value(1) == "--thumbnail"_L1)
        makeThumbnails(isBaseline);
    else {
        const bool isSmoke = arguments.contains(u"--smoke"_s);
        const int times = isSmoke ? 1 : 10;
        const auto video = data.filePath(u"large.mp4"_s);
        QFile file(video);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("there is no video");
        for (int i = 0; i < (isSmoke ? 2 : 200); ++i)
            file.write(QByteArray(1024 * 1024, char(i)));
        file.close();
        makePhotos(data.filePath(u"Pictures"_s), isSmoke ? 40 : 1000);
        compare("a video of 200 MiB is read", {u"--read"_s, video}, data.path(), times);
        compare("scrolling through 1,000 photos of 12 MP", {u"--grid"_s, isSmoke ? u"5000"_s : u"200"_s},
                data.path(), isSmoke ? 1 : 3);
        compare("a thumbnail; the baseline is a JPEG's", {u"--thumbnail"_s}, data.path(), times);
    }
    return 0;
}
