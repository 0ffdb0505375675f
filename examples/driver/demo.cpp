#include "driver/demo.h"

#include "driver/example_host.h"
#include "driver/failure.h"
#include "driver/feedback_flow.h"
#include "driver/picture_album.h"
#include "driver/screens.h"

#include <QCommandLineParser>
#include <QGuiApplication>

#include <cstdio>

namespace driver {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize phone(390, 844);

// No two values alike, so that one report is not taken for the other.
constexpr FilledForm inTheLight{.message = "The list jumps to its top when I come back to it."_L1,
                                .email = "maya@example.com"_L1,
                                .frequencyIndex = 2,
                                .frequency = "several_times"_L1,
                                .hasMedia = true};
constexpr FilledForm inTheDark{.message = "Dark mode: \"3 days\" is hard to read (100%)!"_L1,
                               .email = "Noor.K+demo@example.org"_L1,
                               .frequencyIndex = 4,
                               .frequency = "almost_every_time"_L1,
                               .hasDrawing = true};
constexpr FilledForm inTheDialog{.message = "I cannot say here that it was yesterday."_L1,
                                 .email = "li@example.net"_L1,
                                 .frequencyIndex = 1,
                                 .frequency = "few_times"_L1};

void prepare(ExampleHost &host, const Screens &screens)
{
    host.window()->resize(phone);
    host.window()->requestActivate();
    screens.waitUntil(u"the app has the keyboard"_s,
                      [&host] { return QGuiApplication::focusWindow() == host.window(); });
}

} // namespace

void addDriverOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        {u"inbox"_s, u"Folder of the sandbox that --service is."_s, u"DIR"_s},
        {u"pictures"_s, u"Where a picture of every screen is left."_s, u"DIR"_s},
    });
}

int runDemo(ExampleHost &host, const QCommandLineParser &parser)
{
    try {
        Screens screens;
        PictureAlbum album(QDir(parser.value(u"pictures"_s)));
        Inbox inbox(QDir(parser.value(u"inbox"_s)));
        const auto send = [&](const QString &look, const FilledForm &form) {
            const QImage app = reportBug(host, screens, album, look, form);
            const QDir report = inbox.takeNew();
            compare(report, form, app);
            std::printf("%s: %s holds what was typed, and a screenshot of the app, %d x %d\n",
                        qPrintable(look), qPrintable(report.path()), app.width(), app.height());
        };
        prepare(host, screens);
        send(u"light"_s, inTheLight);
        host.turnDark(screens);
        send(u"dark"_s, inTheDark);
        if (host.openDialog(screens))
            send(u"dialog"_s, inTheDialog);
        return 0;
    } catch (const Failure &failure) {
        std::fprintf(stderr, "%s\n", qPrintable(failure.text));
        return 1;
    }
}

} // namespace driver
