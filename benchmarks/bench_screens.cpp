// What the screens cost the host: its start, the time from a call to the first frame that shows a screen, the
// capture of its window, and how long its event loop stands still meanwhile. The baselines are what Qt takes
// for the least that could do the same.
#include "capture/screenshot_capturer.h"
#include "host_window.h"
#include "measured_process.h"
#include "screens.h"
#include "table.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>

#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <chrono>

namespace {

using namespace zenvor;
using namespace Qt::StringLiterals;
using bench::click;
using bench::find;
using bench::waitFor;

/// Milliseconds from \a action to the first frame in which \a name is shown.
template<typename F>
double untilShown(QQuickWindow *window, QLatin1StringView name, F action)
{
    double elapsed = 0;
    QElapsedTimer timer;
    QObject context;
    QObject::connect(window, &QQuickWindow::frameSwapped, &context, [&] {
        if (elapsed == 0 && find(window->contentItem(), name))
            elapsed = double(timer.nsecsElapsed()) / 1e6;
    });
    timer.start();
    action();
    if (!QTest::qWaitFor([&elapsed] { return elapsed != 0; }, 10'000))
        qFatal("%s is not shown", name.data());
    return elapsed;
}

double emptyPopup(QQuickWindow *window)
{
    QQmlEngine engine;
    std::unique_ptr<QObject> popup;
    return untilShown(window, "empty"_L1, [&] {
        QQmlComponent component(&engine);
        component.setData(R"(
            import QtQuick
            import QtQuick.Templates as T
            T.Popup { modal: true; width: 390; height: 844; contentItem: Rectangle { objectName: "empty" } })",
                          {});
        popup.reset(component.createWithInitialProperties(
            {{u"parent"_s, QVariant::fromValue(window->contentItem())}}));
        QMetaObject::invokeMethod(popup.get(), "open");
    });
}

// The figures of one process, a name and a number a line: first and later opening, capture, stalls.
int runFlow(int repetitions, bool isBaseline)
{
    const bench::HostWindow host;
    auto *const window = host.window();
    if (!QTest::qWaitForWindowActive(window))
        qFatal("the window is not active");
    const auto print = [](const char *name, double value) {
        std::printf("%s %f\n", name, value);
    };
    if (isBaseline) {
        print("popup", emptyPopup(window));
        print("popup again", emptyPopup(window));
        return 0;
    }
    setReportServiceUrl(QUrl(u"http://127.0.0.1:9"_s)); // nobody is there
    Zenvor::shared().configure(u"token"_s, false);
    QTest::qWait(300); // what configure() has started
    bench::Stalls stalls;
    for (int i = 0; i <= repetitions; ++i) {
        const auto name = [i](const char *first, const char *later) {
            return i == 0 ? first : later;
        };
        stalls.take();
        print(name("dialog", "dialog again"),
              untilShown(window, "categoryDialog"_L1, [] { Zenvor::shared().present(); }));
        QTest::qWait(300); // its animation
        print(name("stall dialog", "stall dialog again"), stalls.take());
        print(name("form", "form again"),
              untilShown(window, "feedbackSheet"_L1, [window] { click(window, "reportBugRow"_L1); }));
        QTest::qWait(400);
        print(name("stall form", "stall form again"), stalls.take());
        click(window, "messageTextView"_L1);
        QTest::keyClick(window, Qt::Key_A);
        QTest::qWait(100);
        stalls.take();
        click(window, "sendTopButton"_L1);
        waitFor(window, "alertOkButton"_L1); // it cannot be sent
        print("stall send", stalls.take());
        QTest::qWait(300);
        click(window, "alertOkButton"_L1);
        waitFor(window, "alertOkButton"_L1, false);
        click(window, "closeButton"_L1);
        waitFor(window, "feedbackSheet"_L1, false);
    }
    QElapsedTimer timer;
    for (int i = 0; i < 10; ++i) {
        window->update();
        timer.start();
        window->grabWindow();
        print("grab", double(timer.nsecsElapsed()) / 1e6);
        timer.start();
        ScreenshotCapturer::captureCurrentWindow();
        print("capture", double(timer.nsecsElapsed()) / 1e6);
    }
    return 0;
}

void runProcess(bench::Figures &figures, const QStringList &arguments, const QString &density)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_SCALE_FACTOR"_s, density);
    bench::runProcess(figures, arguments, environment);
}

double startOf(const char *program)
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    QProcess process;
    process.start(QString::fromLocal8Bit(program),
                  {QString::number(std::chrono::duration<double, std::micro>(now).count(), 'f', 1)});
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("%s failed", program);
    return process.readAllStandardOutput().toDouble() / 1000;
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QGuiApplication::setDesktopFileName(u"com.example.bench"_s);
    QGuiApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() == 3)
        return runFlow(arguments.at(2).toInt(), arguments.at(1) == "--baseline"_L1);

    const bool isSmoke = arguments.contains(u"--smoke"_s);
    const int processes = isSmoke ? 1 : 10;
    std::vector<double> with;
    std::vector<double> without;
    for (int i = 0; i < 2 * processes; ++i) {
        without.push_back(startOf(START_PROGRAM "_without"));
        with.push_back(startOf(START_PROGRAM "_with"));
    }
    bench::printHeader("start of a host to its first frame, ms");
    bench::printRow("without the library", without);
    bench::printRow("linked and configured", with);
    std::printf("  ratio %.3f\n", bench::median(with) / bench::median(without));

    for (const auto *density : {"1", "2.77"}) { // the second: 1080 by 2338 pixels
        bench::Figures figures;
        for (int i = 0; i < processes; ++i) {
            runProcess(figures, {u"--baseline"_s, u"0"_s}, QString::fromLatin1(density));
            runProcess(figures, {u"--flow"_s, isSmoke ? u"1"_s : u"4"_s}, QString::fromLatin1(density));
        }
        std::printf("\n390 by 844 points, %s pixels a point, ms", density);
        bench::printHeader("from the call to the first frame");
        for (const auto *name : {"popup", "dialog", "form", "popup again", "dialog again", "form again"})
            bench::printRow(name, figures.value(QString::fromLatin1(name)));
        bench::printHeader("longest standstill of the event loop");
        for (const auto *name :
             {"stall dialog", "stall form", "stall dialog again", "stall form again", "stall send"})
            bench::printRow(name, figures.value(QString::fromLatin1(name)));
        bench::printHeader("picture of the window");
        for (const auto *name : {"grab", "capture"})
            bench::printRow(name, figures.value(QString::fromLatin1(name)));
    }
    return 0;
}
