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

/// The stored ping queue of the app: what it holds, as stored.
struct QueueShowCommand
{
};

struct QueueEnqueueCommand
{
    QString deviceId;
};

struct QueueFlushCommand
{
    int maxBatchSize = 3;
};

using Command = std::variant<ValidateCommand, PingCommand, ReportCommand, QueueShowCommand,
                             QueueEnqueueCommand, QueueFlushCommand>;

/// What the user asked for.
struct CommandLine
{
    std::optional<QUrl> service; ///< instead of the one that the library was built for
    QString token; ///< empty for commands that send nothing
    QString bundleId;
    bool isVerbose = false;
    Command command;
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
