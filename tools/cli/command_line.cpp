#include "cli/command_line.h"

#include <zenvor/zenvor_version.h>

#include <QCommandLineParser>

#include <algorithm>

namespace zenvor::cli {
namespace {

using namespace Qt::StringLiterals;

// What stands in the options as it does on the wire.
constexpr FeedbackCategory categories[] = {FeedbackCategory::Bug, FeedbackCategory::Improvement};
constexpr BugOccurrenceFrequency frequencies[] = {
    BugOccurrenceFrequency::FirstTime, BugOccurrenceFrequency::FewTimes, BugOccurrenceFrequency::SeveralTimes,
    BugOccurrenceFrequency::ManyTimes, BugOccurrenceFrequency::AlmostEveryTime};

constexpr qsizetype maxFiles = 5;

QString optionValue(FeedbackCategory category)
{
    return category == FeedbackCategory::Bug ? u"bug"_s : u"improvement"_s;
}

QString optionValue(BugOccurrenceFrequency frequency)
{
    return wireValue(frequency);
}

struct UsageError
{
    QString text;
};

template<typename T, size_t N>
T choice(const QCommandLineParser &parser, const QString &option, const T (&choices)[N])
{
    const auto value = parser.value(option);
    QStringList known;
    for (const T candidate : choices) {
        if (optionValue(candidate) == value)
            return candidate;
        known.append(optionValue(candidate));
    }
    throw UsageError{"--"_L1 + option + " is one of "_L1 + known.join(", "_L1) + '.'_L1};
}

QString required(const QCommandLineParser &parser, const QString &option)
{
    if (!parser.isSet(option))
        throw UsageError{"--"_L1 + option + " is missing."_L1};
    return parser.value(option);
}

Command reportCommand(const QCommandLineParser &parser)
{
    required(parser, u"category"_s);
    ReportCommand report;
    report.draft = {.category = choice(parser, u"category"_s, categories),
                    .message = required(parser, u"message"_s),
                    .occurrenceFrequency = choice(parser, u"frequency"_s, frequencies),
                    .email = parser.value(u"email"_s),
                    .allowContact = parser.isSet(u"allow-contact"_s)};
    report.files = parser.values(u"attach"_s);
    if (report.files.size() > maxFiles)
        throw UsageError{u"A report takes at most five files."_s};
    if (!nonEmptyTrimmed(report.draft.message))
        throw UsageError{u"--message is empty."_s};
    return report;
}

QString deviceId(const QCommandLineParser &parser)
{
    const auto id = required(parser, u"device-id"_s);
    if (!nonEmptyTrimmed(id))
        throw UsageError{u"--device-id is empty."_s};
    return id;
}

int batchSize(const QCommandLineParser &parser)
{
    bool isNumber = false;
    const int size = parser.value(u"max-batch-size"_s).toInt(&isNumber);
    if (!isNumber || size < 0)
        throw UsageError{u"--max-batch-size is a number from 0 on."_s};
    return size;
}

struct CommandRule
{
    QLatin1StringView name;
    QStringList options; ///< beside those that all commands share
    bool needsToken;
    Command (*read)(const QCommandLineParser &parser);
};

const CommandRule commandRules[] = {
    {"validate"_L1,
     {},
     true,
     [](const QCommandLineParser &) -> Command {
         return ValidateCommand();
     }},
    {"ping"_L1,
     {u"device-id"_s},
     true,
     [](const QCommandLineParser &parser) -> Command {
         return PingCommand{deviceId(parser)};
     }},
    {"report"_L1,
     {u"category"_s, u"message"_s, u"frequency"_s, u"email"_s, u"allow-contact"_s, u"attach"_s},
     true,
     reportCommand},
    {"queue show"_L1,
     {},
     false,
     [](const QCommandLineParser &) -> Command {
         return QueueShowCommand();
     }},
    {"queue enqueue"_L1,
     {u"device-id"_s},
     false,
     [](const QCommandLineParser &parser) -> Command {
         return QueueEnqueueCommand{deviceId(parser)};
     }},
    {"queue flush"_L1,
     {u"max-batch-size"_s},
     true,
     [](const QCommandLineParser &parser) -> Command {
         return QueueFlushCommand{batchSize(parser)};
     }},
};

QString commandNames()
{
    QStringList names;
    for (const auto &rule : commandRules)
        names.append(rule.name);
    return names.join(", "_L1);
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Talks to a Zenvor report service from a shell.\n\n"
        "Commands:\n"
        "  validate   print whether the token belongs to the bundle identifier\n"
        "  ping       tell the service that a device runs the app (--device-id)\n"
        "  report     send a report (--category, --message, ...)\n"
        "  queue show     print the stored device pings of the app as JSON\n"
        "  queue enqueue  want a device ping (--device-id)\n"
        "  queue flush    send the pings that are due (--max-batch-size)"_s);
    parser.addPositionalArgument(u"command"_s, commandNames());
    parser.addOptions({
        {u"service"_s, u"Origin of the report service: https, or http on this machine."_s, u"URL"_s},
        {u"token"_s, u"SDK token; better in the environment as ZENVOR_TOKEN."_s, u"TOKEN"_s},
        {u"bundle-id"_s, u"Identifier of the app, sent as given."_s, u"ID"_s},
        {u"verbose"_s, u"List the requests on standard error, without tokens and texts."_s},
        {u"device-id"_s, u"ping, queue enqueue: identifier of the device."_s, u"ID"_s},
        {u"max-batch-size"_s, u"queue flush: how many pings at most."_s, u"N"_s, u"3"_s},
        {u"category"_s, u"report: bug or improvement."_s, u"CATEGORY"_s},
        {u"message"_s, u"report: the description."_s, u"TEXT"_s},
        {u"frequency"_s,
         u"report of a bug: first_time, few_times, several_times, many_times or "
         "almost_every_time."_s,
         u"FREQUENCY"_s, u"first_time"_s},
        {u"email"_s, u"report: address for questions; sent only with --allow-contact."_s, u"ADDRESS"_s},
        {u"allow-contact"_s, u"report: the sender agrees to be contacted."_s},
        {u"attach"_s, u"report: a picture or video; may be given up to five times."_s, u"FILE"_s},
    });
    parser.addHelpOption();
    parser.addVersionOption();
}

CommandLine read(const QCommandLineParser &parser, const QString &environmentToken)
{
    const auto name = parser.positionalArguments().join(u' ');
    const auto rule = std::find_if(std::begin(commandRules), std::end(commandRules),
                                   [&name](const CommandRule &candidate) { return candidate.name == name; });
    if (rule == std::end(commandRules))
        throw UsageError{"Give one command: "_L1 + commandNames() + '.'_L1};
    const QStringList common{u"service"_s, u"token"_s, u"bundle-id"_s, u"verbose"_s};
    for (const auto &option : parser.optionNames()) {
        if (!common.contains(option) && !rule->options.contains(option))
            throw UsageError{"--"_L1 + option + " does not belong to the command "_L1 + name + '.'_L1};
    }

    CommandLine line;
    line.command = rule->read(parser);
    if (parser.isSet(u"service"_s))
        line.service = QUrl(parser.value(u"service"_s), QUrl::StrictMode);
    line.token = parser.isSet(u"token"_s) ? parser.value(u"token"_s) : environmentToken;
    if (rule->needsToken && line.token.isEmpty())
        throw UsageError{u"--token is missing, and ZENVOR_TOKEN is not set."_s};
    line.bundleId = required(parser, u"bundle-id"_s);
    line.isVerbose = parser.isSet(u"verbose"_s);
    return line;
}

} // namespace

std::variant<CommandLine, Notice> readCommandLine(const QStringList &arguments,
                                                  const QString &environmentToken)
{
    QCommandLineParser parser;
    addOptions(parser);
    const bool isParsed = parser.parse(arguments);
    if (parser.isSet(u"help"_s))
        return Notice{parser.helpText(), false};
    if (parser.isSet(u"version"_s))
        return Notice{u"zenvor-cli " ZENVOR_VERSION "\n"_s, false};
    try {
        if (!isParsed)
            throw UsageError{parser.errorText()};
        return read(parser, environmentToken);
    } catch (const UsageError &error) {
        return Notice{error.text + u"\nSee zenvor-cli --help.\n"_s, true};
    }
}

} // namespace zenvor::cli
