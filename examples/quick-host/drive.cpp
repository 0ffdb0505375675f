#include "driver/demo.h"
#include "driver/example_host.h"
#include "driver/screens.h"
#include "host/command_line.h"
#include "larder.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQuickWindow>

using namespace Qt::StringLiterals;

namespace {

class LarderHost final : public driver::ExampleHost
{
public:
    bool open() { return (m_window = m_larder.open()); }

    QWindow *window() const override { return m_window; }
    QImage picture() const override { return m_window->grabWindow(); }

    void turnDark(driver::Screens &screens) override
    {
        screens.tap("settingsTab"_L1);
        screens.tap("darkSwitch"_L1);
        screens.tap("recipesTab"_L1);
        screens.waitUntil(u"the app is dark"_s, [this] { return m_window->color().lightness() < 128; });
        screens.tap("recipe"_L1);
        screens.waitUntil(u"the recipe has slid in"_s, [&screens] {
            return screens.isShown("shoppingButton"_L1) && !screens.isShown("recipe"_L1);
        });
    }

private:
    Larder m_larder;
    QQuickWindow *m_window = nullptr;
};

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    driver::addDriverOptions(parser);
    if (!setUpByCommandLine(parser))
        return usedWrongly;
    LarderHost host;
    return host.open() ? driver::runDemo(host, parser) : 1;
}
