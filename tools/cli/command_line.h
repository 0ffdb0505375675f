#pragma once

#include "client/feedback_report.h"

#include <QStringList>
#include <QUrl>

#include <optional>
#include <variant>

namespace zenvor::cli {

struct ValidateCommand
{
};

struct PingCommand
{
    QString deviceId;
};

struct ReportCommand
{
    FeedbackDraft draft;
    QStringList files;
};

/// What the user asked for.
struct CommandLine
{
    std::optional<QUrl> service; ///< instead of the one that the library was built for
    QString token;
    QString bundleId;
    bool isVerbose = false;
    std::variant<ValidateCommand, PingCommand, ReportCommand> command;
};

/// Text to print instead of running a command: help or the version on standard output, or what is
/// wrong with the arguments on standard error.
struct Notice
{
    QString text;
    bool isError = false;
};

/// Reads \a arguments, the program's name first. The token may also come from \a environmentToken,
/// which keeps it out of the list of processes.
std::variant<CommandLine, Notice> readCommandLine(const QStringList &arguments,
                                                  const QString &environmentToken);

} // namespace zenvor::cli
