#include "host/command_line.h"
#include "larder.h"

#include <QCommandLineParser>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"A recipe book whose readers can send feedback."_s);
    if (!setUpByCommandLine(parser))
        return usedWrongly;

    Larder larder;
    return larder.open() ? QGuiApplication::exec() : 1;
}
