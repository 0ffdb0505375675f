#include "cli/command_line.h"
#include "cli/commands.h"

#include <zenvor/report_service.h>

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int wrongUsage = 2;

int refuse(const QString &text)
{
    std::fputs(text.toLocal8Bit().constData(), stderr);
    return wrongUsage;
}

zenvor::Task<> runAndExit(zenvor::cli::CommandLine line)
{
    const int code = co_await zenvor::cli::run(std::move(line));
    QCoreApplication::exit(code);
}

} // namespace

int main(int argc, char **argv)
{
    using namespace zenvor::cli;

    const QCoreApplication application(argc, argv);
    auto arguments = readCommandLine(QCoreApplication::arguments(), qEnvironmentVariable("ZENVOR_TOKEN"));
    if (const auto *notice = std::get_if<Notice>(&arguments)) {
        if (notice->isError)
            return refuse(notice->text);
        std::fputs(notice->text.toLocal8Bit().constData(), stdout);
        return 0;
    }
    auto &line = std::get<CommandLine>(arguments);
    if (line.service && !zenvor::setReportServiceUrl(*line.service))
        return refuse(QStringLiteral("--service takes an https origin, or an http one on this machine.\n"));

    // From inside the event loop, which the command may otherwise end before it has begun.
    QTimer::singleShot(0, &application,
                       [&line] { runAndExit(std::move(line)); }); // detached: ends the event loop
    return QCoreApplication::exec();
}
