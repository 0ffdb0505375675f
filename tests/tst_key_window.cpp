#include "platform/window.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QWindow>

using namespace zenvor;
using namespace Qt::StringLiterals;

// A window as Qt Quick Controls has it, for a host without Qt Quick.
class QQuickApplicationWindow : public QWindow
{
    Q_OBJECT
    Q_PROPERTY(QColor color MEMBER m_color)

private:
    QColor m_color = Qt::white;
};

// What QML makes of it: a class of its own, derived.
class QQuickApplicationWindow_QML_1 : public QQuickApplicationWindow
{
    Q_OBJECT
};

namespace {

enum class MainWindow { Shown, Hidden, Minimised };

enum class Relation { None, Child, Transient };

enum class Owner { Host, Library };

enum class Expected { Nothing, Main, Focused };

QPalette paletteWith(Qt::GlobalColor text, Qt::GlobalColor background)
{
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Window, background);
    return palette;
}

bool takesFocus(QWindow &window)
{
    window.show();
    window.requestActivate();
    return QTest::qWaitFor([&window] { return QGuiApplication::focusWindow() == &window; });
}

QWindow *activeWidgetWindow()
{
    const QWidget *widget = QApplication::activeWindow();
    return widget ? widget->windowHandle() : nullptr;
}

std::optional<QPalette> widgetPalette(const QWindow *window)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        if (widget->windowHandle() == window)
            return widget->palette();
    }
    return std::nullopt;
}

constexpr WidgetWindows realWidgetWindows{activeWidgetWindow, widgetPalette};

} // namespace

class TestKeyWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void thereIsNoneBeforeTheApplicationIsActive(); // first: afterwards it stays active
    void findsTheWindowOfTheHost_data();
    void findsTheWindowOfTheHost();
    void thereIsNoneWhileTheWindowIsHiddenOrMinimised();
    void climbsFromAMenuOverALibraryWindowToTheHost();
    void staysTheMainWindowWhileAMenuOfWidgetsIsOpen();
    void tellsTheStyleOfAWindow_data();
    void tellsTheStyleOfAWindow();
    void tellsTheStyleOfAWidgetByItsOwnPalette();
};

void TestKeyWindow::cleanup()
{
    setWidgetWindows({});
    QApplication::setPalette(paletteWith(Qt::black, Qt::white));
    QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
}

void TestKeyWindow::thereIsNoneBeforeTheApplicationIsActive()
{
    QMainWindow window;
    window.show();
    setWidgetWindows({[] { return QGuiApplication::topLevelWindows().constFirst(); }, nullptr});

    QCOMPARE(QGuiApplication::applicationState(), Qt::ApplicationInactive);
    QCOMPARE(keyWindow(), nullptr);
    QTRY_COMPARE(QGuiApplication::applicationState(), Qt::ApplicationActive);
    QCOMPARE(keyWindow(), window.windowHandle());
}

void TestKeyWindow::findsTheWindowOfTheHost_data()
{
    QTest::addColumn<MainWindow>("state");
    QTest::addColumn<Qt::WindowType>("type");
    QTest::addColumn<Relation>("relation");
    QTest::addColumn<Owner>("owner");
    QTest::addColumn<Expected>("expected");

    const auto row = [](const char *tag, MainWindow state, Qt::WindowType type, Relation relation,
                        Owner owner, Expected expected) {
        QTest::newRow(tag) << state << type << relation << owner << expected;
    };
    using enum MainWindow;
    using enum Relation;
    using enum Owner;
    row("dialog of its own", Shown, Qt::Dialog, None, Host, Expected::Focused);
    row("child window", Shown, Qt::Window, Child, Host, Expected::Main);
    row("child of a minimised window", Minimised, Qt::Window, Child, Host, Expected::Nothing);
    row("menu", Shown, Qt::Popup, Transient, Host, Expected::Main);
    row("menu that belongs to nothing", Shown, Qt::Popup, None, Host, Expected::Nothing);
    row("menu of a hidden window", Hidden, Qt::Popup, Transient, Host, Expected::Nothing);
    row("tool tip", Shown, Qt::ToolTip, Transient, Host, Expected::Main);
    row("splash screen", Shown, Qt::SplashScreen, Transient, Host, Expected::Main);
    row("library's window", Shown, Qt::Window, Transient, Library, Expected::Main);
}

void TestKeyWindow::findsTheWindowOfTheHost()
{
    QFETCH(const MainWindow, state);
    QFETCH(const Qt::WindowType, type);
    QFETCH(const Relation, relation);
    QFETCH(const Owner, owner);
    QFETCH(const Expected, expected);

    QWindow main;
    QVERIFY(takesFocus(main));
    QCOMPARE(keyWindow(), &main);
    if (state == MainWindow::Minimised)
        main.showMinimized();

    QWindow focused(relation == Relation::Child ? &main : nullptr);
    if (relation == Relation::Transient)
        focused.setTransientParent(&main);
    if (relation != Relation::Child)
        focused.setFlags(type);
    if (owner == Owner::Library)
        markAsOwnWindow(&focused);
    QVERIFY(takesFocus(focused));
    if (state == MainWindow::Hidden) {
        main.hide();
        QVERIFY(takesFocus(focused));
    }

    QWindow *const window = expected == Expected::Main ? &main
        : expected == Expected::Focused                ? &focused
                                                       : nullptr;
    QCOMPARE(keyWindow(), window);
}

void TestKeyWindow::thereIsNoneWhileTheWindowIsHiddenOrMinimised()
{
    QWindow window;
    QVERIFY(takesFocus(window));
    window.showMinimized();
    QCOMPARE(keyWindow(), nullptr);
    window.showNormal();
    QCOMPARE(keyWindow(), &window);
    window.hide();
    QCOMPARE(QGuiApplication::focusWindow(), &window); // not all systems take the focus away
    QCOMPARE(keyWindow(), nullptr);
}

void TestKeyWindow::climbsFromAMenuOverALibraryWindowToTheHost()
{
    QWindow host;
    QVERIFY(takesFocus(host));
    QWindow sheet;
    sheet.setTransientParent(&host);
    markAsOwnWindow(&sheet);
    QVERIFY(takesFocus(sheet));
    QWindow menu;
    menu.setFlags(Qt::Popup);
    menu.setTransientParent(&sheet);
    QVERIFY(takesFocus(menu));
    QCOMPARE(keyWindow(), &host);

    sheet.setTransientParent(&menu); // leads in a circle
    QCOMPARE(keyWindow(), nullptr);
}

void TestKeyWindow::staysTheMainWindowWhileAMenuOfWidgetsIsOpen()
{
    QMainWindow main;
    main.show();
    QVERIFY(QTest::qWaitForWindowActive(&main));
    QMenu menu; // without a parent nothing leads from it to the main window
    menu.addAction(u"Copy"_s);
    menu.popup({});
    QTRY_COMPARE(QGuiApplication::focusWindow(), menu.windowHandle());

    QCOMPARE(keyWindow(), nullptr);
    setWidgetWindows(realWidgetWindows);
    QCOMPARE(keyWindow(), main.windowHandle());
}

void TestKeyWindow::tellsTheStyleOfAWindow_data()
{
    QTest::addColumn<QVariant>("property");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<InterfaceStyle>("style");

    const auto row = [](const char *tag, const QVariant &property, const QColor &color,
                        const QPalette &palette, InterfaceStyle style) {
        QTest::newRow(tag) << property << color << palette << style;
    };
    const QPalette light = paletteWith(Qt::black, Qt::white);
    const QPalette dark = paletteWith(Qt::white, Qt::black);
    using enum InterfaceStyle;
    row("light palette", {}, {}, light, Light);
    row("dark palette", {}, {}, dark, Dark);
    row("dark grey window, light palette", {}, 0x303030, light, Dark);
    row("light grey window, dark palette", {}, 0xfafafa, dark, Light);
    row("saturated blue is dark", {}, 0x0000ff, light, Dark);
    row("transparent window", {}, QColor(Qt::transparent), light, Light);
    row("host says dark", u"dark"_s, 0xfafafa, light, Dark);
    row("host says light", u"light"_s, 0x303030, dark, Light);
    row("host says a number", 1, {}, dark, Dark);
}

void TestKeyWindow::tellsTheStyleOfAWindow()
{
    QFETCH(const QVariant, property);
    QFETCH(const QColor, color);
    QFETCH(const QPalette, palette);
    QApplication::setPalette(palette);
    QQuickApplicationWindow_QML_1 window;
    window.setProperty("color", color);
    window.setProperty("zenvorInterfaceStyle", property);
    QTEST(interfaceStyle(&window), "style");
    QCOMPARE(interfaceStyle(nullptr), InterfaceStyle::Unspecified);

    QWindow plain; // its property "color" would be the host's own affair
    plain.setProperty("color", QColor(Qt::black));
    plain.setProperty("zenvorInterfaceStyle", u"light"_s);
    QCOMPARE(interfaceStyle(&plain), InterfaceStyle::Light);
    plain.setProperty("zenvorInterfaceStyle", {});
    QCOMPARE(interfaceStyle(&plain) == InterfaceStyle::Dark, palette == paletteWith(Qt::white, Qt::black));
}

void TestKeyWindow::tellsTheStyleOfAWidgetByItsOwnPalette()
{
    QMainWindow main;
    main.setPalette(paletteWith(Qt::white, Qt::black));
    main.show();
    setWidgetWindows(realWidgetWindows);
    QCOMPARE(interfaceStyle(main.windowHandle()), InterfaceStyle::Dark);

    QWindow other; // no widget: the application's palette counts
    QCOMPARE(interfaceStyle(&other), InterfaceStyle::Light);
}

QTEST_MAIN(TestKeyWindow)
#include "tst_key_window.moc"
