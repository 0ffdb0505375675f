#include "cli/command_line.h"
#include "fuzz_input.h"

using namespace zenvor;
using namespace zenvor::cli;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

QString option(const QString &name, const QString &value)
{
    return "--"_L1 + name + u'=' + value;
}

QStringList argumentsOf(const FeedbackDraft &draft)
{
    QStringList arguments{option(u"message"_s, draft.message), option(u"email"_s, draft.email)};
    arguments << option(u"category"_s, draft.category == FeedbackCategory::Bug ? u"bug"_s : u"improvement"_s)
              << option(u"frequency"_s, wireValue(draft.occurrenceFrequency));
    if (draft.allowContact)
        arguments << u"--allow-contact"_s;
    return arguments;
}

struct CommandArguments
{
    QStringList operator()(const ValidateCommand &) const { return {u"validate"_s}; }
    QStringList operator()(const QueueShowCommand &) const { return {u"queue"_s, u"show"_s}; }
    QStringList operator()(const PingCommand &ping) const
    {
        require(nonEmptyTrimmed(ping.deviceId).has_value(), "a ping is for a device");
        return {u"ping"_s, option(u"device-id"_s, ping.deviceId)};
    }
    QStringList operator()(const QueueEnqueueCommand &wanted) const
    {
        require(nonEmptyTrimmed(wanted.deviceId).has_value(), "a ping is for a device");
        return {u"queue"_s, u"enqueue"_s, option(u"device-id"_s, wanted.deviceId)};
    }
    QStringList operator()(const QueueFlushCommand &due) const
    {
        require(due.maxBatchSize >= 0, "a batch has a size that the queue takes");
        return {u"queue"_s, u"flush"_s, option(u"max-batch-size"_s, QString::number(due.maxBatchSize))};
    }
    QStringList operator()(const ReportCommand &report) const
    {
        require(report.files.size() <= 5, "a report takes at most five files");
        require(nonEmptyTrimmed(report.draft.message).has_value(), "a report says something");
        QStringList arguments = argumentsOf(report.draft);
        for (const QString &file : report.files)
            arguments << option(u"attach"_s, file);
        return QStringList{u"report"_s} + arguments;
    }
};

/// The words that ask for the same.
QStringList argumentsOf(const CommandLine &line)
{
    QStringList arguments{u"zenvor-cli"_s};
    arguments += std::visit(CommandArguments(), line.command);
    arguments << option(u"bundle-id"_s, line.bundleId) << option(u"token"_s, line.token);
    if (line.isVerbose)
        arguments << u"--verbose"_s;
    return arguments;
}

void requireNotice(const Notice &notice)
{
    require(notice.text.endsWith(u'\n') && !notice.text.trimmed().isEmpty(), "a notice is a line of text");
    require(!notice.isError || notice.text.endsWith("See zenvor-cli --help.\n"_L1),
            "a mistake comes with the way to the manual");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    makeApplication();
    const Fields fields(data, size);
    QStringList arguments{u"zenvor-cli"_s};
    for (const QByteArray &argument : fields.from(1))
        arguments << QString::fromUtf8(argument);

    const auto result = readCommandLine(arguments, QString::fromUtf8(fields.at(0)));
    if (const auto *notice = std::get_if<Notice>(&result)) {
        requireNotice(*notice);
        return 0;
    }
    const auto words = argumentsOf(std::get<CommandLine>(result));
    const auto again = readCommandLine(words, {});
    require(std::holds_alternative<CommandLine>(again), "what was understood can be asked for again");
    require(argumentsOf(std::get<CommandLine>(again)) == words, "the same words ask for the same");
    return 0;
}
