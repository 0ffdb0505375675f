#include "cli/command_line.h"

#include <zenvor/zenvor_version.h>

#include <QCommandLineParser>

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

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        u"Talks to a Zenvor report service from a shell.\n\n"
        "Commands:\n"
        "  validate   print whether the token belongs to the bundle identifier\n"
        "  ping       tell the service that a device runs the app (--device-id)\n"
        "  report     send a report (--category, --message, ...)"_s);
    parser.addPositionalArgument(u"command"_s, u"validate, ping or report"_s);
    parser.addOptions({
        {u"service"_s, u"Origin of the report service: https, or http on this machine."_s, u"URL"_s},
        {u"token"_s, u"SDK token; better in the environment as ZENVOR_TOKEN."_s, u"TOKEN"_s},
        {u"bundle-id"_s, u"Identifier of the app, sent as given."_s, u"ID"_s},
        {u"verbose"_s, u"List the requests on standard error, without tokens and texts."_s},
        {u"device-id"_s, u"ping: identifier of the device."_s, u"ID"_s},
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

void refuseOptionsOf(const QCommandLineParser &parser, const QString &command, const QStringList &allowed)
{
    for (const auto &name : parser.optionNames()) {
        if (!allowed.contains(name))
            throw UsageError{"--"_L1 + name + " does not belong to the command "_L1 + command + '.'_L1};
    }
}

QString required(const QCommandLineParser &parser, const QString &option)
{
    if (!parser.isSet(option))
        throw UsageError{"--"_L1 + option + " is missing."_L1};
    return parser.value(option);
}

ReportCommand reportCommand(const QCommandLineParser &parser)
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

CommandLine read(const QCommandLineParser &parser, const QString &environmentToken)
{
    const auto arguments = parser.positionalArguments();
    if (arguments.size() != 1)
        throw UsageError{u"Give one command: validate, ping or report."_s};
    const auto &command = arguments.first();
    const QStringList common{u"service"_s, u"token"_s, u"bundle-id"_s, u"verbose"_s};

    CommandLine line;
    if (command == "validate"_L1) {
        refuseOptionsOf(parser, command, common);
        line.command = ValidateCommand();
    } else if (command == "ping"_L1) {
        refuseOptionsOf(parser, command, common + QStringList{u"device-id"_s});
        line.command = PingCommand{required(parser, u"device-id"_s)};
        if (!nonEmptyTrimmed(std::get<PingCommand>(line.command).deviceId))
            throw UsageError{u"--device-id is empty."_s};
    } else if (command == "report"_L1) {
        refuseOptionsOf(parser, command,
                        common
                            + QStringList{u"category"_s, u"message"_s, u"frequency"_s, u"email"_s,
                                          u"allow-contact"_s, u"attach"_s});
        line.command = reportCommand(parser);
    } else {
        throw UsageError{"There is no command \""_L1 + command + "\": give validate, ping or report."_L1};
    }

    if (parser.isSet(u"service"_s))
        line.service = QUrl(parser.value(u"service"_s), QUrl::StrictMode);
    line.token = parser.isSet(u"token"_s) ? parser.value(u"token"_s) : environmentToken;
    if (line.token.isEmpty())
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
