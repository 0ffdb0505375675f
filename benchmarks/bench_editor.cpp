// How far the ink is behind the pointer in the screenshot editor: from an event to the frame that shows it,
// on a phone's screen, with few and with many strokes there already. The baseline is what Qt Quick takes to
// show a small rectangle at another place in the same window.
#include "editor/flattened_picture.h"
#include "editor/screenshot_editor_view_controller.h"
#include "host_window.h"
#include "table.h"
#include "ui/quick_presenter.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>

#include <cmath>

namespace {

using namespace zenvor;
using namespace Qt::StringLiterals;

constexpr QSize phone(390, 844);

// Lines of a hand that writes: short, all over the picture, of all tools.
void addStrokes(Drawing &drawing, int count)
{
    for (int i = 0; i < count; ++i) {
        const QPointF start((i * 37) % 360, (i * 91) % 760);
        const auto tool = DrawingTool(i % 8 == 7 ? 2 : i % 2);
        drawing.begin(tool, QColor::fromHsv(i * 29 % 360, 255, 255), tool == DrawingTool::Pen ? 5 : 12,
                      start);
        for (int at = 1; at <= 12; ++at)
            drawing.extend(start + QPointF(at * 4, 15 * std::sin(at)));
        drawing.end();
    }
}

template<typename F>
double milliseconds(F action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return double(timer.nsecsElapsed()) / 1e6;
}

/// From \a action to the next frame.
template<typename F>
double untilFrame(QQuickWindow *window, F action)
{
    bool isSwapped = false;
    QObject context;
    QObject::connect(window, &QQuickWindow::frameSwapped, &context, [&isSwapped] { isSwapped = true; });
    return milliseconds([&] {
        action();
        while (!isSwapped)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
}

void settle(QQuickWindow *window)
{
    window->update();
    QTest::qWait(50);
}

std::vector<double> moves(QQuickWindow *window, int count, QPoint from)
{
    std::vector<double> times;
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    settle(window);
    for (int i = 1; i <= count; ++i) {
        const auto at = from + QPoint(i * 7 % 200, int(40 * std::sin(i * 0.3)));
        times.push_back(untilFrame(window, [&] { QTest::mouseMove(window, at); }));
    }
    QTest::mouseRelease(window, Qt::LeftButton, {}, from);
    settle(window);
    return times;
}

std::vector<double> baseline(QQuickWindow *window, int count)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(import QtQuick; Rectangle { z: 1; width: 20; height: 20; color: "red" })", {});
    const std::unique_ptr<QObject> object(component.createWithInitialProperties(
        {{u"parent"_s, QVariant::fromValue(window->contentItem()->childItems().constLast())}}));
    auto *rectangle = qobject_cast<QQuickItem *>(object.get());
    settle(window);
    std::vector<double> times;
    for (int i = 1; i <= count; ++i) {
        times.push_back(untilFrame(window, [&] {
            rectangle->setPosition({100.0 + i * 7 % 200, 400 + 40 * std::sin(i * 0.3)});
        }));
    }
    return times;
}

void measure(QQuickWindow *window, int strokes, int count)
{
    QImage picture(phone * window->effectiveDevicePixelRatio(), QImage::Format_RGB32);
    picture.fill(Qt::lightGray);
    const auto editor = std::make_shared<ScreenshotEditorViewController>(picture, [](const QImage &) {});
    editor->present(QuickPresenter::shared(), ModalPresentationStyle::FullScreen, false, window);
    settle(window);
    auto &drawing = *editor->drawing();
    const auto building = milliseconds([&] { addStrokes(drawing, strokes); });
    settle(window);

    const auto pixels = drawing.area().pixels();
    std::printf("\n%d strokes on %d by %d pixels, drawn in %.0f ms", strokes, pixels.width(), pixels.height(),
                building);
    bench::printHeader("from the event to the frame, ms");
    bench::printRow("a rectangle moves (baseline)", baseline(window, count));
    for (const auto &[tool, name] : {std::pair(ToolPalette::Pen, "pen"),
                                     {ToolPalette::Marker, "marker"},
                                     {ToolPalette::Eraser, "eraser"}}) {
        editor->tools()->setTool(tool);
        bench::printRow(name, moves(window, count, {100, 300}));
    }
    std::vector<double> undo;
    std::vector<double> redo;
    std::vector<double> flatten;
    for (int i = 0; i < 10; ++i) {
        undo.push_back(untilFrame(window, [&] { drawing.undo(); }));
        redo.push_back(untilFrame(window, [&] { drawing.redo(); }));
        flatten.push_back(milliseconds([&] { flattened(picture, drawing); }));
    }
    bench::printRow("undo of a long stroke", undo);
    bench::printRow("redo of it", redo);
    bench::printHeader("alone, ms");
    bench::printRow("flatten", flatten);

    // The window becomes larger: until the first frame, and until all strokes are drawn anew.
    drawing.setArea(phone - QSize(0, 100), 1);
    bench::printRow("after a change of size", {milliseconds([&] { drawing.setArea(phone, 1); })});
    bench::printRow("until all is sharp again", {milliseconds([&] { drawing.finished(); })});
    editor->dismiss(false, {});
    settle(window);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        qputenv("QT_SCALE_FACTOR", "2.77"); // 1080 by 2338 pixels
    QGuiApplication application(argc, argv);
    const bool isSmoke = QCoreApplication::arguments().contains(u"--smoke"_s);
    const bench::HostWindow host;
    if (!QTest::qWaitForWindowActive(host.window()))
        qFatal("the window is not active");
    for (const int strokes : {0, 100, isSmoke ? 200 : 10'000})
        measure(host.window(), strokes, isSmoke ? 5 : 200);
    return 0;
}
