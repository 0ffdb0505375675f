#include "feedback.h"
#include "larder.h"

#include <QCommandLineParser>
#include <QGuiApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;
constexpr int usedWrongly = 2;

int refuse(const QString &text)
{
    std::fprintf(stderr, "quick-host: %s\nSee quick-host --help.\n", qUtf8Printable(text));
    return usedWrongly;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"A recipe book whose readers can send feedback."_s);
    addFeedbackOptions(parser);
    const auto help = parser.addHelpOption();
    if (!parser.parse(QCoreApplication::arguments()))
        return refuse(parser.errorText());
    if (parser.isSet(help))
        parser.showHelp();

    FeedbackOptions options;
    QString error;
    if (!readFeedbackOptions(parser, &options, &error) || !setUpFeedback(options, &error))
        return refuse(error);

    Larder larder;
    if (!larder.open())
        return failed;
    return QGuiApplication::exec();
}
