#include "capture/window_capture.h"
#include "facade/top_view_controller.h"
#include "platform/window.h"
#include "support/log_recorder.h"
#include "support/widget_host.h"
#include "widgets/widget_host_views.h"

#include <zenvor/report_service.h>

#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>
#include <QQuickWidget>
#include <QTabWidget>
#include <QTemporaryDir>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::WidgetHost;

namespace {

QWidget *named(QWidget *widget, const char *name)
{
    widget->setObjectName(QLatin1StringView(name));
    return widget;
}

QStackedWidget *stackOf(const QList<QWidget *> &pages)
{
    auto *stack = new QStackedWidget;
    for (auto *page : pages)
        stack->addWidget(page);
    stack->setCurrentIndex(int(pages.size()) - 1);
    return stack;
}

QTabWidget *tabsOf(const QList<QWidget *> &pages)
{
    auto *tabs = new QTabWidget;
    for (auto *page : pages)
        tabs->addTab(page, u"tab"_s);
    tabs->setCurrentIndex(int(pages.size()) - 1);
    return tabs;
}

QByteArray redScene()
{
    return "import QtQuick; Rectangle { color: 'red' }"_ba;
}

void setScene(QQmlEngine *engine, auto *view)
{
    auto *component = new QQmlComponent(engine, view);
    component->setData(redScene(), {});
    view->setContent({}, component, component->create());
}

} // namespace

/// What is particular to hosts on Qt Widgets: their views, and a stage over windows that change under it.
class TestWidgetHosts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void findsTheTopMostView_data();
    void findsTheTopMostView();
    void followsTheHostsWindow();
    void goesWithTheHostsWindow_data();
    void goesWithTheHostsWindow();
    void liesOverAModalDialog();
    void closesMenus();
    void leavesByTheWindowManager();
    void picturesScenesWithin();
    void isDarkAsTheHostIs_data();
    void isDarkAsTheHostIs();

private:
    std::unique_ptr<WidgetHost> m_host;
};

void TestWidgetHosts::initTestCase()
{
    QVERIFY(setReportServiceUrl(QUrl(u"http://127.0.0.1:9"_s))); // nobody is there
    Zenvor::shared().configure(u"token"_s, false);
}

void TestWidgetHosts::init()
{
    m_host = std::make_unique<WidgetHost>();
    m_host->awaitFront();
}

void TestWidgetHosts::cleanup()
{
    m_host.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TestWidgetHosts::findsTheTopMostView_data()
{
    QTest::addColumn<std::function<QWidget *()>>("content");
    QTest::addColumn<QString>("found"); // "window" for the host's, empty for nothing
    const auto row = [](const char *name, const char *found, std::function<QWidget *()> content) {
        QTest::newRow(name) << std::move(content) << QString::fromLatin1(found);
    };
    row("no container", "window", [] { return new QWidget; });
    row("stack", "detail", [] { return stackOf({new QWidget, named(new QWidget, "detail")}); });
    row("empty stack", "", [] { return stackOf({}); });
    row("tabs", "second", [] { return tabsOf({new QWidget, named(new QWidget, "second")}); });
    row("no tabs", "tabs", [] { return named(tabsOf({}), "tabs"); });
    row("stack in tabs", "page", [] { return tabsOf({stackOf({named(new QWidget, "page")})}); });
    row("tabs in a stack", "page", [] { return stackOf({tabsOf({named(new QWidget, "page")})}); });
    row("empty stack in a corner", "window", [] {
        auto *page = new QWidget;
        auto *stack = stackOf({});
        stack->setParent(page);
        stack->resize(100, 100);
        return page;
    });
}

void TestWidgetHosts::findsTheTopMostView()
{
    QFETCH(const std::function<QWidget *()>, content);
    m_host->mainWindow().setCentralWidget(content());
    QCoreApplication::processEvents(); // lays it out
    const WidgetHostViews views;
    const auto *view = topViewController(views, views.rootView(m_host->window()));
    QTEST(!view ? QString() : view == &m_host->mainWindow() ? u"window"_s : view->objectName(), "found");
}

void TestWidgetHosts::followsTheHostsWindow()
{
    m_host->openForm("reportBugRow"_L1);
    auto &window = m_host->mainWindow();
    window.setGeometry(50, 60, 700, 500);
    QTRY_COMPARE(m_host->scene()->geometry(), m_host->window()->geometry());
    QTRY_COMPARE(m_host->rectOf("sendTopButton"_L1).right(), 670 - 22.0);
    QPointer<QQuickWindow> scene = m_host->scene();
    window.hide();
    QTRY_VERIFY(!scene->isVisible());
    window.show();
    QTRY_VERIFY(scene->isVisible() && QGuiApplication::focusWindow() == scene);
    m_host->tap("closeButton"_L1);
    QTRY_VERIFY(!scene);
    QTRY_VERIFY(m_host->hasFieldFocus());
}

void TestWidgetHosts::goesWithTheHostsWindow_data()
{
    QTest::addColumn<QByteArray>("screen");
    for (const auto *screen : {"categoryDialog", "feedbackSheet", "alert"})
        QTest::newRow(screen) << QByteArray(screen);
}

void TestWidgetHosts::goesWithTheHostsWindow()
{
    QFETCH(const QByteArray, screen);
    test::LogRecorder log;
    for (int i = 0; i < 2; ++i) { // the guard is cleared
        if (screen == "categoryDialog")
            m_host->openDialog();
        else
            m_host->openForm("reportBugRow"_L1);
        if (screen == "alert") {
            m_host->tap("sendTopButton"_L1);
            QTRY_VERIFY(m_host->isShown("alert"_L1));
        }
        cleanup();
        init();
        QVERIFY(!m_host->scene());
    }
    QCOMPARE(log.lines().count(u"info Zenvor: Presenting category dialog."_s), 2);
}

void TestWidgetHosts::liesOverAModalDialog()
{
    QDialog dialog(&m_host->mainWindow());
    dialog.setModal(true);
    dialog.resize(300, 300);
    QLineEdit field(&dialog);
    dialog.show();
    dialog.activateWindow();
    QTRY_COMPARE(keyWindow(), dialog.windowHandle());
    m_host->openDialog();
    QCOMPARE(m_host->scene()->transientParent(), dialog.windowHandle());
    QCOMPARE(m_host->scene()->geometry(), m_host->window()->geometry()); // a dialog is too small for a form
    m_host->press(Qt::Key_Escape);
    QTRY_VERIFY(!m_host->scene());
    QVERIFY(dialog.isVisible());
    QTRY_VERIFY(field.hasFocus());
}

void TestWidgetHosts::closesMenus()
{
    QMenu menu(&m_host->mainWindow());
    menu.addAction(u"action"_s);
    menu.popup(m_host->mainWindow().pos());
    QTRY_VERIFY(menu.isVisible());
    m_host->openDialog();
    QVERIFY(!menu.isVisible());
    m_host->tap("cancelButton"_L1);
    QTRY_VERIFY(!m_host->scene());
}

void TestWidgetHosts::leavesByTheWindowManager()
{
    test::LogRecorder log;
    m_host->openDialog();
    m_host->scene()->close();
    QTRY_VERIFY(log.lines().contains(u"info Zenvor: Category dialog cancelled."_s));
    QTRY_VERIFY(!m_host->scene());
}

void TestWidgetHosts::picturesScenesWithin()
{
    QQmlEngine engine;
    auto *page = new QWidget;
    auto *widget = new QQuickWidget(&engine, page);
    widget->setResizeMode(QQuickWidget::SizeRootObjectToView);
    setScene(&engine, widget);
    widget->setGeometry(0, 0, 100, 100);
    auto *view = new QQuickView(&engine, nullptr);
    view->setResizeMode(QQuickView::SizeRootObjectToView);
    setScene(&engine, view);
    auto *container = QWidget::createWindowContainer(view, page);
    container->setGeometry(200, 300, 100, 100);
    m_host->mainWindow().setCentralWidget(page);
    QTRY_VERIFY(view->isVisible());
    const auto corner = page->mapTo(&m_host->mainWindow(), QPoint());
    const auto colorAt = [this, corner](QPoint point) {
        const auto picture = captureWindow(m_host->window());
        return picture.pixelColor((corner + point) * picture.devicePixelRatio());
    };
    QTRY_COMPARE(colorAt({50, 50}), QColor(Qt::red));
    QTRY_COMPARE(colorAt({250, 350}), QColor(Qt::red));
    QVERIFY(colorAt({150, 350}) != QColor(Qt::red));
}

void TestWidgetHosts::isDarkAsTheHostIs_data()
{
    QTest::addColumn<QString>("styleSheet");
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("isDark");
    const QPalette light(Qt::black, Qt::white, Qt::white, Qt::gray, Qt::gray, Qt::black, Qt::white);
    const QPalette dark(Qt::white, Qt::black, Qt::black, Qt::gray, Qt::gray, Qt::white, Qt::black);
    QTest::newRow("light palette") << QString() << light << false;
    QTest::newRow("dark palette") << QString() << dark << true;
    QTest::newRow("dark style sheet")
        << u"QWidget { background: #202020; color: #eeeeee }"_s << light << true;
}

void TestWidgetHosts::isDarkAsTheHostIs()
{
    QFETCH(const QString, styleSheet);
    QFETCH(const QPalette, palette);
    m_host->mainWindow().setPalette(palette);
    m_host->mainWindow().setStyleSheet(styleSheet);
    m_host->openDialog();
    const auto card = m_host->find("cardView"_L1)->property("color").value<QColor>();
    QTEST(card != QColor(Qt::white), "isDark");
    QTEST(interfaceStyle(m_host->window()) == InterfaceStyle::Dark, "isDark");
    m_host->tap("cancelButton"_L1);
    QTRY_VERIFY(!m_host->scene());
}

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    QGuiApplication::setDesktopFileName(u"com.example.test"_s);
    const QApplication application(argc, argv);
    TestWidgetHosts test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_widget_hosts.moc"
