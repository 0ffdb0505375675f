#include "editor/canvas_item.h"
#include "editor/flattened_picture.h"
#include "editor/screenshot_editor_view_controller.h"
#include "support/quick_host.h"
#include "ui/quick_presenter.h"

#include <QAccessible>
#include <QPainter>
#include <QSignalSpy>
#include <QTabletEvent>

#include <cmath>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::QuickHost;

namespace {

constexpr QRgb grey = 0xff606060;
constexpr QRgb red = 0xffff3b30;

// Of one colour, with a square of another in the middle.
QImage picture(QSize size, QColor middle = QColor::fromRgb(grey))
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(grey);
    QPainter painter(&image);
    painter.fillRect(QRect(size.width() / 2 - 20, size.height() / 2 - 20, 40, 40), middle);
    return image;
}

QRgb mixed(QRgb above, QRgb below, double opacity)
{
    const auto mix = [opacity](int a, int b) {
        return int(std::lround(a * opacity + b * (1 - opacity)));
    };
    return qRgb(mix(qRed(above), qRed(below)), mix(qGreen(above), qGreen(below)),
                mix(qBlue(above), qBlue(below)));
}

bool areAlike(QRgb one, QRgb other, int tolerance = 3)
{
    const auto near = [tolerance](int a, int b) {
        return std::abs(a - b) <= tolerance;
    };
    return near(qRed(one), qRed(other)) && near(qGreen(one), qGreen(other)) && near(qBlue(one), qBlue(other))
        && near(qAlpha(one), qAlpha(other));
}

QPointingDevice *touchscreen()
{
    static auto *const device = QTest::createTouchDevice(); // Qt keeps it listed to the end
    return device;
}

// A fixed drawing of all tools, on an area of 200 by 300 points.
void drawSample(Drawing &drawing)
{
    const auto line = [&drawing](DrawingTool tool, const QColor &color, qreal width, auto place) {
        drawing.begin(tool, color, width, place(0.0));
        for (int i = 1; i <= 12; ++i) // so few that curves differ from lines
            drawing.extend(place(i / 12.0));
        drawing.end();
    };
    line(DrawingTool::Pen, Qt::red, 5,
         [](double at) { return QPointF(20 + 160 * at, 80 + 40 * std::sin(7 * at)); });
    line(DrawingTool::Marker, Qt::yellow, 25, [](double at) { // crosses itself
        return QPointF(100 + 60 * std::cos(9 * at), 190 + 60 * std::sin(6 * at));
    });
    line(DrawingTool::Eraser, {}, 20, [](double at) { return QPointF(60 + 40 * at, 20 + 260 * at); });
    line(DrawingTool::Pen, Qt::blue, 12, [](double) { return QPointF(160, 30); });
}

} // namespace

/// The editor in a window, driven by what a user does.
class TestScreenshotEditor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void laysItselfOutToTheLetter_data();
    void laysItselfOutToTheLetter();
    void hasTheColorsOfTheAppearance();
    void drawsWhereAPointerGoes_data();
    void drawsWhereAPointerGoes();
    void marksEvenlyWhereAStrokeCrossesItself();
    void erasesStrokesButNotThePicture();
    void drawsWithOneFingerAtATime();
    void forgetsAStrokeThatTheSystemTakesBack();
    void takesStrokesBackAndDrawsThemAgain();
    void restoresEveryPixel();
    void isReadyAfterAnyNumberOfStrokes();
    void emptiesTheDrawingForGood();
    void savesNothingWhenItIsLeft_data();
    void savesNothingWhenItIsLeft();
    void savesWhatIsShown_data();
    void savesWhatIsShown();
    void keepsStrokesOnThePictureWhenTheWindowChanges();
    void drawsLikeEver();
    void namesEveryControl_data();
    void namesEveryControl();
    void isReachedByTheKeyboard();
    void beginsOnTheRight();
    void makesRoomBehindTheTools();

private:
    std::shared_ptr<ScreenshotEditorViewController> open(const QImage &image, QSize window = {390, 844});
    void mouseStroke(const QList<QPoint> &points);
    QTest::QTouchEventSequence touch() { return QTest::touchEvent(m_host->window(), touchscreen()); }
    void awaitFrame();
    void touchStroke(const QList<QPoint> &points);
    void tabletStroke(const QList<QPoint> &points);
    QQuickItem *find(const char *name) const { return m_host->find(QLatin1StringView(name)); }
    QRectF rect(const char *name) const { return m_host->rectOf(QLatin1StringView(name)); }
    QRgb pixel(QPointF position) const;
    void choose(const char *name) { m_host->tap(QLatin1StringView(name)); }

    std::unique_ptr<QuickHost> m_host;
    QList<QImage> m_saved;
};

void TestScreenshotEditor::init()
{
    m_host = std::make_unique<QuickHost>();
    QVERIFY(QTest::qWaitForWindowActive(m_host->window()));
    m_saved.clear();
}

void TestScreenshotEditor::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QLocale::setDefault(QLocale(u"en"_s));
}

std::shared_ptr<ScreenshotEditorViewController> TestScreenshotEditor::open(const QImage &image, QSize window)
{
    m_host->window()->resize(window);
    auto editor = std::make_shared<ScreenshotEditorViewController>(
        image, [this](const QImage &saved) { m_saved.append(saved); });
    editor->present(QuickPresenter::shared(), ModalPresentationStyle::FullScreen, false, m_host->window());
    const auto hasSize = [&] {
        return m_host->window()->contentItem()->size() == QSizeF(window);
    };
    if (!QTest::qWaitFor(hasSize))
        qFatal("the window does not get its size");
    m_host->window()->grabWindow(); // lays everything out
    return editor;
}

void TestScreenshotEditor::mouseStroke(const QList<QPoint> &points)
{
    QTest::mousePress(m_host->window(), Qt::LeftButton, {}, points.constFirst());
    for (const auto &point : points)
        QTest::mouseMove(m_host->window(), point);
    QTest::mouseRelease(m_host->window(), Qt::LeftButton, {}, points.constLast());
}

// Qt Quick hands on one movement of a finger for each frame.
void TestScreenshotEditor::awaitFrame()
{
    QSignalSpy frames(m_host->window(), &QQuickWindow::frameSwapped);
    m_host->window()->update();
    QVERIFY(frames.wait());
}

void TestScreenshotEditor::touchStroke(const QList<QPoint> &points)
{
    touch().press(0, points.constFirst()).commit();
    for (const auto &point : points) {
        touch().move(0, point).commit();
        awaitFrame();
    }
    touch().release(0, points.constLast()).commit();
}

void TestScreenshotEditor::tabletStroke(const QList<QPoint> &points)
{
    static const QPointingDevice stylus(u"stylus"_s, 7, QInputDevice::DeviceType::Stylus,
                                        QPointingDevice::PointerType::Pen, QInputDevice::Capability::Position,
                                        1, 1);
    const auto send = [this](QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
        QTabletEvent event(type, &stylus, at, m_host->window()->mapToGlobal(at), 1, 0, 0, 0, 0, 0, {},
                           type == QEvent::TabletMove ? Qt::NoButton : Qt::LeftButton, buttons);
        event.setAccepted(false);
        QCoreApplication::sendEvent(m_host->window(), &event);
        if (event.isAccepted())
            return;
        // As Qt does for what nobody takes.
        if (type == QEvent::TabletPress)
            QTest::mousePress(m_host->window(), Qt::LeftButton, {}, at);
        else if (type == QEvent::TabletMove)
            QTest::mouseMove(m_host->window(), at);
        else
            QTest::mouseRelease(m_host->window(), Qt::LeftButton, {}, at);
    };
    send(QEvent::TabletPress, points.constFirst(), Qt::LeftButton);
    for (const auto &point : points)
        send(QEvent::TabletMove, point, Qt::LeftButton);
    send(QEvent::TabletRelease, points.constLast(), Qt::NoButton);
}

QRgb TestScreenshotEditor::pixel(QPointF position) const
{
    const auto image = m_host->window()->grabWindow();
    return image.pixel((position * m_host->window()->effectiveDevicePixelRatio()).toPoint());
}

void TestScreenshotEditor::laysItselfOutToTheLetter_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QMarginsF>("safeArea");
    QTest::addColumn<int>("rows"); // of tools
    QTest::newRow("phone") << QSize(390, 844) << QMarginsF() << 2;
    QTest::newRow("phone with a notch") << QSize(390, 844) << QMarginsF(0, 47, 0, 34) << 2;
    QTest::newRow("phone on its side") << QSize(844, 390) << QMarginsF(47, 0, 47, 21) << 1;
    QTest::newRow("tablet") << QSize(1024, 768) << QMarginsF(0, 20, 0, 0) << 1;
    QTest::newRow("small") << QSize(320, 480) << QMarginsF() << 3;
}

void TestScreenshotEditor::laysItselfOutToTheLetter()
{
    QFETCH(const QSize, size);
    QFETCH(const QMarginsF, safeArea);
    QFETCH(const int, rows);
    m_host->window()->setProperty("zenvorSafeAreaMargins", QVariant::fromValue(safeArea));
    const auto editor = open(picture({390, 844}), size);
    const qreal width = size.width();
    const QRectF bar(0, safeArea.top(), width, 54);
    QCOMPARE(rect("topBar"), bar);
    QCOMPARE(rect("imageView"), QRectF(0, bar.bottom() + 8, width, size.height() - bar.bottom() - 8));
    QCOMPARE(rect("canvasView"), rect("imageView"));
    QCOMPARE(rect("cancelEditButton").left(), 16.0);
    QCOMPARE(rect("clearButton").center(), bar.center());
    QCOMPARE(rect("saveButton").right(), width - 16);
    for (const auto *button : {"cancelEditButton", "saveButton"})
        QCOMPARE(rect(button).center().y(), bar.center().y());
    const auto font = [this](const char *button) {
        return find(button)->property("textFont").value<QFont>();
    };
    QCOMPARE(font("clearButton").pixelSize(), 16);
    QCOMPARE(font("clearButton").weight(), QFont::Medium);
    QCOMPARE(font("saveButton").weight(), QFont::DemiBold);

    const auto tools = rect("toolPicker");
    QVERIFY(QRectF({}, size).marginsRemoved(safeArea).contains(tools));
    QCOMPARE(tools.height(), 20 + rows * 44.0 + 4);
    QList<QRectF> places;
    for (auto *button : find("penTool")->parentItem()->childItems()) {
        if (button->width() == 0)
            continue; // what repeats others
        const auto place = button->mapRectToScene({0, 0, button->width(), button->height()});
        QVERIFY(tools.contains(place) && place.width() >= 44 && place.height() >= 44);
        for (const auto &other : std::as_const(places))
            QVERIFY(!place.intersects(other));
        places.append(place);
    }
    QCOMPARE(places.size(), 3 + 3 + 2 + 8);
    // To be looked at.
    if (const auto folder = qEnvironmentVariable("ZENVOR_PICTURES"); !folder.isEmpty()) {
        mouseStroke({{100, 100}, {200, 200}, {300, 150}});
        for (const auto *style : {"light", "dark"}) {
            m_host->window()->setProperty("zenvorInterfaceStyle", QString::fromLatin1(style));
            QTest::qWait(50);
            m_host->window()->grabWindow().save(u"%1/editor %2 %3.png"_s.arg(
                folder, QString::fromLatin1(QTest::currentDataTag()), QString::fromLatin1(style)));
        }
    }
}

void TestScreenshotEditor::hasTheColorsOfTheAppearance()
{
    const auto editor = open(picture({400, 100}));
    const auto color = [this](const char *item) {
        return find(item)->property("color").value<QColor>();
    };
    const QPointF beside = rect("imageView").topLeft() + QPointF(5, 5);
    QCOMPARE(pixel(beside), 0xffffffff);
    QCOMPARE(color("topBar"), QColor::fromRgbF(1, 1, 1, 0.76F));
    QCOMPARE(color("cancelEditButton"), QColor(Qt::black));
    QCOMPARE(color("clearButton"), QColor::fromRgba(0x993c3c43));
    QCOMPARE(color("saveButton"), QColor(0x00, 0x7a, 0xff));
    m_host->window()->setProperty("zenvorInterfaceStyle", u"dark"_s);
    QTRY_COMPARE(pixel(beside), 0xff000000);
    QCOMPARE(color("topBar"), QColor::fromRgbF(0, 0, 0, 0.45F));
    QCOMPARE(color("cancelEditButton"), QColor(Qt::white));
    QCOMPARE(color("clearButton"), QColor::fromRgbF(1, 1, 1, 0.78F));
    QCOMPARE(color("saveButton"), QColor(0x0a, 0x84, 0xff));
}

void TestScreenshotEditor::drawsWhereAPointerGoes_data()
{
    QTest::addColumn<QByteArray>("pointer");
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QRgb>("expected");
    for (const auto *pointer : {"mouse", "finger", "stylus"}) {
        QTest::addRow("pen, %s", pointer) << QByteArray(pointer) << "penTool"_ba << red;
        QTest::addRow("marker, %s", pointer)
            << QByteArray(pointer) << "markerTool"_ba << mixed(red, grey, 0.4);
    }
}

void TestScreenshotEditor::drawsWhereAPointerGoes()
{
    QFETCH(const QByteArray, pointer);
    QFETCH(const QByteArray, tool);
    QFETCH(const QRgb, expected);
    const auto editor = open(picture({390, 844}));
    choose(tool.constData());
    const QList<QPoint> line{{120, 300}, {180, 300}, {240, 300}, {240, 301}, {240, 400}};
    if (pointer == "mouse")
        mouseStroke(line);
    else if (pointer == "finger")
        touchStroke(line);
    else
        tabletStroke(line);
    for (const auto &on :
         {QPointF(120, 300), QPointF(180, 300), QPointF(210, 300), QPointF(240, 380), QPointF(240, 399)})
        QVERIFY2(areAlike(pixel(on), expected),
                 qPrintable(u"%1 at %2,%3"_s.arg(QString::number(pixel(on), 16)).arg(on.x()).arg(on.y())));
    for (const auto &off : {QPointF(105, 300), QPointF(180, 320), QPointF(240, 415)})
        QCOMPARE(pixel(off), grey);
    choose("undoButton"); // it was one stroke
    QCOMPARE(pixel({180, 300}), grey);
    QVERIFY(!editor->drawing()->canUndo());
    QCOMPARE(m_host->reached(), 0);
}

void TestScreenshotEditor::marksEvenlyWhereAStrokeCrossesItself()
{
    const auto editor = open(picture({390, 844}));
    choose("markerTool");
    const auto check = [this](const char *when) {
        const auto image = m_host->window()->grabWindow();
        const auto density = m_host->window()->effectiveDevicePixelRatio();
        for (int x = 110; x < 240; ++x) {
            const auto seen = image.pixel((QPointF(x, 300) * density).toPoint());
            QVERIFY2(areAlike(seen, mixed(red, grey, 0.4)), when);
        }
    };
    QTest::mousePress(m_host->window(), Qt::LeftButton, {}, {100, 300});
    for (const auto &point : {QPoint(200, 300), QPoint(300, 300), QPoint(250, 350), QPoint(200, 250),
                              QPoint(150, 300), QPoint(100, 300)}) {
        QTest::mouseMove(m_host->window(), point);
    }
    check("while it is drawn");
    QTest::mouseRelease(m_host->window(), Qt::LeftButton, {}, {100, 300});
    check("when it is drawn");
}

void TestScreenshotEditor::erasesStrokesButNotThePicture()
{
    const auto editor = open(picture({390, 844}));
    mouseStroke({{100, 300}, {200, 300}, {300, 300}});
    choose("eraserTool");
    mouseStroke({{200, 250}, {200, 300}, {200, 350}});
    QCOMPARE(pixel({200, 300}), grey);
    QCOMPARE(pixel({120, 300}), red);
    choose("undoButton");
    QCOMPARE(pixel({200, 300}), red);
}

void TestScreenshotEditor::drawsWithOneFingerAtATime()
{
    const auto editor = open(picture({390, 844}));
    touch().press(0, {100, 200}).commit();
    touch().move(0, {150, 200}).press(1, {100, 500}).commit();
    touch().move(0, {200, 200}).move(1, {200, 500}).commit();
    QTest::mousePress(m_host->window(), Qt::LeftButton, {}, {100, 400});
    QTest::mouseRelease(m_host->window(), Qt::LeftButton, {}, {100, 400});
    touch().move(0, {250, 200}).release(1, {200, 500}).commit();
    touch().move(0, {300, 200}).commit();
    touch().release(0, {300, 200}).commit();
    for (int x = 100; x <= 300; x += 20)
        QCOMPARE(pixel({qreal(x), 200}), red);
    for (const auto &elsewhere : {QPointF(100, 500), QPointF(150, 500), QPointF(100, 400), QPointF(150, 350)})
        QCOMPARE(pixel(elsewhere), grey);
    touchStroke({{100, 600}, {200, 600}}); // the next one draws
    QCOMPARE(pixel({150, 600}), red);
    QCOMPARE(m_host->reached(), 0);
}

void TestScreenshotEditor::forgetsAStrokeThatTheSystemTakesBack()
{
    const auto editor = open(picture({390, 844}));
    for (const auto *tool : {"penTool", "eraserTool"}) {
        choose("penTool");
        mouseStroke({{150, 150}, {150, 350}});
        choose(tool);
        touch().press(0, {100, 200}).commit();
        touch().move(0, {150, 200}).commit();
        touch().move(0, {250, 200}).commit();
        QTouchEvent cancel(QEvent::TouchCancel, touchscreen());
        QCoreApplication::sendEvent(find("canvasView"), &cancel);
        QCOMPARE(pixel({220, 200}), grey);
        QCOMPARE(pixel({150, 200}), red);
        touch().release(0, {250, 200}).commit();
    }
    choose("undoButton");
    choose("undoButton");
    QVERIFY(!editor->drawing()->canUndo());
}

void TestScreenshotEditor::takesStrokesBackAndDrawsThemAgain()
{
    const auto editor = open(picture({390, 844}));
    mouseStroke({{100, 200}, {300, 200}});
    mouseStroke({{100, 300}, {300, 300}});
    const auto shown = [this] {
        return QList<bool>{pixel({200, 200}) == red, pixel({200, 300}) == red};
    };
    using Lines = QList<bool>;
    m_host->press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(shown(), (Lines{true, false}));
    choose("undoButton");
    choose("undoButton"); // there is nothing left
    QCOMPARE(shown(), (Lines{false, false}));
    m_host->press(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(shown(), (Lines{true, false}));
    m_host->press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(shown(), (Lines{true, true}));
    QVERIFY(!find("redoButton")->isEnabled());
    choose("undoButton");
    mouseStroke({{100, 400}, {300, 400}}); // in its place
    choose("redoButton");
    QCOMPARE(shown(), (Lines{true, false}));
    QCOMPARE(m_host->reached(), 0);
}

// With more strokes than the layer remembers after it was drawn anew.
void TestScreenshotEditor::restoresEveryPixel()
{
    constexpr int count = 130;
    constexpr int step = 26;
    const auto draw = [](Drawing &drawing, int from, int to) {
        for (int i = from; i < to; ++i) {
            const auto tool = DrawingTool(i % 3);
            drawing.begin(tool, QColor::fromHsv(i * 37 % 360, 255, 255), 3 + i % 20, QPointF(i * 7 % 200, 0));
            for (int at = 1; at <= 8; ++at)
                drawing.extend({qreal((i * 31 + at * 41) % 200), at * 25.0});
            drawing.end();
        }
    };
    Drawing drawing({200, 200});
    drawing.setArea({200, 200}, 1);
    QList<QImage> after{drawing.finished()};
    for (int i = 0; i < count; i += step) {
        draw(drawing, i, i + step);
        after.append(drawing.finished());
    }
    for (const bool isDrawnAnew : {false, true}) {
        if (isDrawnAnew) {
            drawing.setArea({100, 100}, 1);
            drawing.setArea({200, 200}, 1);
        }
        QCOMPARE(drawing.finished(), after.constLast());
        for (int i = count - 1; i >= 0; --i) {
            drawing.undo();
            if (i % step == 0)
                QCOMPARE(drawing.finished(), after.at(i / step));
        }
        for (int i = 1; i <= count; ++i) {
            drawing.redo();
            if (i % step == 0)
                QCOMPARE(drawing.finished(), after.at(i / step));
        }
    }
}

// What takes long is done in between, and never loses or repeats a stroke.
void TestScreenshotEditor::isReadyAfterAnyNumberOfStrokes()
{
    constexpr int count = 300;
    const auto line = [](Drawing &drawing, int i) {
        drawing.begin(DrawingTool::Marker, QColor::fromHsv(i % 360, 255, 255), 10, QPointF(i * 13 % 500, 0));
        for (int at = 1; at < 6; ++at)
            drawing.extend({qreal((i * 13 + at * 100) % 500), at * 100.0});
        drawing.end();
    };
    Drawing drawing({500, 500});
    drawing.setArea({500, 500}, 1);
    for (int i = 0; i < count; ++i)
        line(drawing, i);
    drawing.setArea({499, 499}, 1);
    drawing.undo();
    drawing.undo();
    drawing.redo();
    drawing.setArea({500, 500}, 1);
    QElapsedTimer timer;
    timer.start();
    drawing.undo();
    drawing.begin(DrawingTool::Pen, Qt::red, 20, {250, 250});
    drawing.extend({300, 250});
    drawing.end();
    const auto untilDrawn = timer.restart();
    const auto result = drawing.finished();
    QVERIFY2(untilDrawn < timer.elapsed() / 2, qPrintable(u"%1 ms"_s.arg(untilDrawn)));
    QCOMPARE(result.pixelColor(275, 250), QColor(Qt::red));

    Drawing plain({500, 500});
    plain.setArea({500, 500}, 1);
    for (int i = 0; i < count - 2; ++i)
        line(plain, i);
    plain.begin(DrawingTool::Pen, Qt::red, 20, {250, 250});
    plain.extend({300, 250});
    QCOMPARE(plain.finished(), result);
}

void TestScreenshotEditor::emptiesTheDrawingForGood()
{
    const auto editor = open(picture({390, 844}));
    mouseStroke({{100, 200}, {300, 200}});
    mouseStroke({{100, 300}, {300, 300}});
    choose("undoButton");
    choose("clearButton");
    QCOMPARE(pixel({200, 200}), grey);
    for (const auto key : {Qt::Key_Z, Qt::Key_Y})
        m_host->press(key, Qt::ControlModifier);
    QCOMPARE(pixel({200, 200}), grey);
    QCOMPARE(pixel({200, 300}), grey);
    choose("saveButton");
    QCOMPARE(m_saved.size(), 1);
    QCOMPARE(m_saved.constFirst().pixel(m_saved.constFirst().rect().center()), grey);
}

void TestScreenshotEditor::savesNothingWhenItIsLeft_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Cancel") << 0;
    QTest::newRow("Esc") << int(Qt::Key_Escape);
    QTest::newRow("Back") << int(Qt::Key_Back);
}

void TestScreenshotEditor::savesNothingWhenItIsLeft()
{
    QFETCH(const int, key);
    auto editor = open(picture({390, 844}));
    mouseStroke({{100, 200}, {300, 200}});
    if (key)
        m_host->press(Qt::Key(key));
    else
        choose("cancelEditButton");
    if (m_host->isShown("saveButton"_L1)) // while it slides away
        editor->saveTapped();
    const std::weak_ptr<ScreenshotEditorViewController> left = editor;
    editor.reset();
    QTRY_VERIFY(left.expired());
    QVERIFY(!m_host->isShown("screenshotEditor"_L1));
    QVERIFY(m_saved.isEmpty());
    QCOMPARE(m_host->reached(), 0);
}

void TestScreenshotEditor::savesWhatIsShown_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QSize>("window");
    QTest::addColumn<QPointF>("beside"); // where nothing of the picture is, in parts of the area
    QTest::newRow("upright in wide") << QSize(390, 844) << QSize(844, 390) << QPointF(0.1, 0.5);
    QTest::newRow("wide in upright") << QSize(844, 390) << QSize(390, 844) << QPointF(0.5, 0.1);
    QTest::newRow("much larger") << QSize(3000, 1000) << QSize(390, 844) << QPointF(0.5, 0.1);
    QTest::newRow("tiny") << QSize(60, 60) << QSize(390, 844) << QPointF(0.5, 0.05);
}

void TestScreenshotEditor::savesWhatIsShown()
{
    QFETCH(const QSize, picture);
    QFETCH(const QSize, window);
    QFETCH(const QPointF, beside);
    const auto editor = open(::picture(picture, Qt::green), window);
    const auto area = rect("imageView");
    const auto density = m_host->window()->effectiveDevicePixelRatio();
    const auto drawn = (area.center() - QPointF(0, 40)).toPoint();
    const auto drawnBeside = (area.topLeft() + QPointF(10, 10)).toPoint();
    mouseStroke({drawn - QPoint(5, 0), drawn + QPoint(5, 0)});
    mouseStroke({drawnBeside, drawnBeside + QPoint(5, 0)});
    const auto shown = m_host->window()->grabWindow();
    choose("saveButton");
    editor->saveTapped();
    QTRY_VERIFY(!m_host->isShown("screenshotEditor"_L1));
    QCOMPARE(m_saved.size(), 1);
    const auto &saved = m_saved.constFirst();
    QCOMPARE(saved.size(), (area.size() * density).toSize());
    QCOMPARE(saved.devicePixelRatio(), density);
    const auto at = [&](QPointF position) { // in the window
        return saved.pixel(((position - area.topLeft()) * density).toPoint());
    };
    QCOMPARE(at(drawn), red);
    QCOMPARE(at(drawnBeside), red);
    QCOMPARE(qAlpha(at(area.topLeft() + QPointF(area.width() * beside.x(), area.height() * beside.y()))), 0);
    QVERIFY(areAlike(at(area.center()), 0xff00ff00, 8));
    // All of it is where it was seen, above the tools and but for smooth edges.
    for (int y = 0; y < int(area.height()) - 150; y += 7) {
        for (int x = 0; x < int(area.width()); x += 7) {
            const auto position = area.topLeft() + QPointF(x, y);
            const auto kept = at(position);
            if (qAlpha(kept) == 0 || qAlpha(kept) == 255) {
                const auto expected = qAlpha(kept) == 0 ? 0xffffffff : kept;
                QVERIFY(areAlike(shown.pixel((position * density).toPoint()), expected, 8));
            }
        }
    }
}

void TestScreenshotEditor::keepsStrokesOnThePictureWhenTheWindowChanges()
{
    const auto editor = open(picture({400, 400}, Qt::green));
    const auto middle = rect("imageView").center().toPoint();
    mouseStroke({middle, middle + QPoint(1, 0)}); // a dot on the square
    const auto mark = middle + QPoint(100, 100); // a quarter of the picture away, more or less
    QTest::mousePress(m_host->window(), Qt::LeftButton, {}, mark);
    QTest::mouseMove(m_host->window(), mark + QPoint(20, 0));
    m_host->window()->resize(844, 500);
    QTRY_COMPARE(find("canvasView")->width(), 844.0);
    const auto area = rect("imageView");
    const qreal scale = area.height() / 390;
    QCOMPARE(pixel(area.center()), red);
    QCOMPARE(pixel(area.center() + QPointF(14, 0) * scale), 0xff00ff00);
    QCOMPARE(pixel(area.center() + QPointF(110, 100) * scale), red);
    const auto next = (area.center() + QPointF(100, 50) * scale).toPoint();
    QTest::mouseMove(m_host->window(), next); // goes on
    QTest::mouseRelease(m_host->window(), Qt::LeftButton, {}, next);
    QCOMPARE(pixel(next), red);
    QCOMPARE(pixel(area.center() + QPointF(110, 100) * scale), red);
}

void TestScreenshotEditor::drawsLikeEver()
{
    Drawing drawing({200, 300});
    drawing.setArea({200, 300}, 1);
    drawSample(drawing);
    QImage page(200, 300, QImage::Format_RGB32);
    page.fill(Qt::white);
    const auto drawn = flattened(page, drawing).convertToFormat(QImage::Format_RGB32);
    const auto file = QStringLiteral(ZENVOR_GOLDEN "/editor_drawing.png");
    if (qEnvironmentVariableIsSet("ZENVOR_WRITE_GOLDEN"))
        QVERIFY(drawn.save(file));
    const QImage golden(file);
    QCOMPARE(golden.size(), drawn.size());
    int different = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x)
            different += areAlike(drawn.pixel(x, y), golden.pixel(x, y), 48) ? 0 : 1;
    }
    QVERIFY2(different < 60, qPrintable(QString::number(different))); // of 60,000: smooth edges
}

void TestScreenshotEditor::namesEveryControl_data()
{
    QTest::addColumn<QAccessible::Role>("role");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *control, QAccessible::Role role, const char *name) {
        QTest::newRow(control) << role << QString::fromLatin1(name);
    };
    row("screenshotEditor", QAccessible::Dialog, "Edit screenshot");
    row("imageView", QAccessible::Graphic, "Screenshot");
    row("canvasView", QAccessible::Canvas, "Drawing");
    row("cancelEditButton", QAccessible::Button, "Cancel");
    row("clearButton", QAccessible::Button, "Clear");
    row("saveButton", QAccessible::Button, "Save");
    row("toolPicker", QAccessible::Grouping, "Drawing tools");
    row("toolPickerToggle", QAccessible::Button, "Hide tools");
    row("penTool", QAccessible::RadioButton, "Pen");
    row("markerTool", QAccessible::RadioButton, "Marker");
    row("eraserTool", QAccessible::RadioButton, "Eraser");
    row("widthChoice", QAccessible::RadioButton, "Thin line");
    row("undoButton", QAccessible::Button, "Undo");
    row("redoButton", QAccessible::Button, "Redo");
    row("colorSwatch", QAccessible::RadioButton, "Black");
}

void TestScreenshotEditor::namesEveryControl()
{
    const auto editor = open(picture({390, 844}));
    auto *interface = QAccessible::queryAccessibleInterface(find(QTest::currentDataTag()));
    QVERIFY(interface);
    QTEST(interface->role(), "role");
    QTEST(interface->text(QAccessible::Name), "name");
    if (interface->role() != QAccessible::RadioButton)
        return;
    const bool isPen = QTest::currentDataTag() == "penTool"_ba;
    QVERIFY(interface->state().checkable);
    QCOMPARE(bool(interface->state().checked), isPen);
    for (const auto &action :
         {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()}) {
        interface->actionInterface()->doAction(action);
        QVERIFY(interface->state().checked);
    }
}

void TestScreenshotEditor::isReachedByTheKeyboard()
{
    const auto editor = open(picture({390, 844}));
    mouseStroke({{100, 200}, {300, 200}});
    QStringList order;
    for (int i = 0; i < 19; ++i) {
        m_host->press(Qt::Key_Tab);
        const auto *item = m_host->window()->activeFocusItem();
        order.append(item->objectName());
        if (item->objectName() == u"eraserTool"_s)
            m_host->press(Qt::Key_Space);
        if (item->objectName() == u"colorSwatch"_s && item->property("text") == u"Purple"_s)
            m_host->press(Qt::Key_Return);
    }
    QStringList expected{u"cancelEditButton"_s, u"clearButton"_s, u"saveButton"_s, u"toolPickerToggle"_s,
                         u"penTool"_s,          u"markerTool"_s,  u"eraserTool"_s};
    expected += QStringList(3, u"widthChoice"_s) + QStringList{u"undoButton"_s};
    expected += QStringList(8, u"colorSwatch"_s);
    QCOMPARE(order, expected); // there is nothing to redo
    QCOMPARE(editor->tools()->tool(), ToolPalette::Pen); // by the colour
    QCOMPARE(editor->tools()->color(), QColor(0xaf, 0x52, 0xde));
    QCOMPARE(m_host->reached(), 0);
}

void TestScreenshotEditor::beginsOnTheRight()
{
    QLocale::setDefault(QLocale(u"ar"_s));
    const auto editor = open(picture({390, 844}));
    QCOMPARE(rect("cancelEditButton").right(), 390.0 - 16);
    QCOMPARE(rect("saveButton").left(), 16.0);
    QVERIFY(rect("penTool").left() > rect("markerTool").left());
    mouseStroke({{100, 200}, {120, 200}}); // not mirrored
    QCOMPARE(pixel({110, 200}), red);
}

void TestScreenshotEditor::makesRoomBehindTheTools()
{
    const auto editor = open(picture({390, 844}));
    const auto tools = rect("toolPicker");
    mouseStroke({tools.center().toPoint() - QPoint(0, 10), tools.center().toPoint() - QPoint(20, 10)});
    QVERIFY(!editor->drawing()->canUndo());
    choose("toolPickerToggle");
    QVERIFY(!m_host->isShown("penTool"_L1));
    mouseStroke({{100, 780}, {120, 780}});
    QCOMPARE(pixel({110, 780}), red);
    choose("toolPickerToggle");
    QCOMPARE(rect("toolPicker"), tools);
}

QTEST_MAIN(TestScreenshotEditor)

#include "tst_screenshot_editor.moc"
