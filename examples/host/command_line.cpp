#include "host/command_line.h"

#include "host/feedback_setup.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void addFeedbackOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        {u"service"_s, u"Origin of the report service: https, or http on this machine."_s, u"URL"_s},
        {u"token"_s, u"SDK token. Without it the app runs, but takes no feedback."_s, u"TOKEN"_s},
        {u"bundle-id"_s, u"Identifier of the app, which the token belongs to."_s, u"ID"_s,
         u"com.example.demo"_s},
    });
}

// Empty if there is none.
QString faultIn(const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty())
        return u"There are options only: "_s + parser.positionalArguments().constFirst() + u" is none."_s;
    for (const auto &name : {u"service"_s, u"token"_s, u"bundle-id"_s}) {
        if (parser.isSet(name) && parser.value(name).trimmed().isEmpty())
            return u"--%1 is empty."_s.arg(name);
    }
    if (parser.isSet(u"service"_s) && !parser.isSet(u"token"_s))
        return u"--service needs --token: without a token nothing is sent there."_s;
    return {};
}

} // namespace

bool setUpByCommandLine(QCommandLineParser &parser)
{
    addFeedbackOptions(parser);
    const auto help = parser.addHelpOption();
    const bool isParsed = parser.parse(QCoreApplication::arguments());
    if (isParsed && parser.isSet(help))
        parser.showHelp();
    QString error = isParsed ? faultIn(parser) : parser.errorText();
    const FeedbackOptions options{.service = parser.value(u"service"_s),
                                  .token = parser.value(u"token"_s),
                                  .bundleId = parser.value(u"bundle-id"_s)};
    if (error.isEmpty() && setUpFeedback(options, &error))
        return true;
    const auto program = QCoreApplication::applicationName();
    std::fprintf(stderr, "%s: %s\nSee %s --help.\n", qUtf8Printable(program), qUtf8Printable(error),
                 qUtf8Printable(program));
    return false;
}
