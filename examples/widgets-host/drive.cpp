#include "driver/demo.h"
#include "driver/example_host.h"
#include "driver/screens.h"
#include "host/command_line.h"
#include "look.h"
#include "main_window.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QListView>
#include <QPointer>
#include <QTabBar>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

void tap(const QWidget *widget, QPoint point)
{
    QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {},
                      widget->mapTo(widget->window(), point));
}

class WindowsillHost final : public driver::ExampleHost
{
public:
    WindowsillHost() { m_window->show(); }

    QWindow *window() const override { return shown()->windowHandle(); }
    QImage picture() const override { return shown()->grab().toImage(); }

    void turnDark(driver::Screens &screens) override
    {
        tapTab(2);
        tapButton(u"darkSwitch"_s);
        screens.waitUntil(u"the app is dark"_s,
                          [this] { return m_window->palette().color(QPalette::Window).lightness() < 128; });
        tapTab(0);
        const auto *plants = m_window->findChild<QListView *>(u"plantList"_s);
        const auto first = plants->visualRect(plants->model()->index(0, 0));
        tap(plants->viewport(), first.center());
        screens.waitUntil(u"the plant is shown"_s, [plants] { return !plants->isVisible(); });
    }

    bool openDialog(driver::Screens &screens) override
    {
        tapButton(u"entryButton"_s);
        m_dialog = QApplication::activeModalWidget();
        screens.waitUntil(u"the dialog has opened"_s,
                          [this] { return m_dialog && m_dialog->isActiveWindow(); });
        return true;
    }

private:
    QWidget *shown() const { return m_dialog ? m_dialog.data() : m_window.get(); }

    void tapTab(int index)
    {
        const auto *tabs = m_window->findChild<QTabBar *>(u"tabs"_s);
        tap(tabs, tabs->tabRect(index).center());
    }

    void tapButton(const QString &name)
    {
        const auto *button = m_window->findChild<QWidget *>(name);
        tap(button, button->rect().center());
    }

    const std::unique_ptr<MainWindow> m_window = std::make_unique<MainWindow>();
    QPointer<QWidget> m_dialog;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(u"2.1.0"_s);
    QCommandLineParser parser;
    driver::addDriverOptions(parser);
    if (!setUpByCommandLine(parser))
        return usedWrongly;
    look::setUp();
    WindowsillHost host;
    return driver::runDemo(host, parser);
}
