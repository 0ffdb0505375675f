#include "host/command_line.h"
#include "look.h"
#include "main_window.h"

#include <QApplication>
#include <QCommandLineParser>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(u"2.1.0"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"A plant diary whose writers can send feedback."_s);
    if (!setUpByCommandLine(parser))
        return usedWrongly;

    look::setUp();
    MainWindow window;
    window.show();
    return QApplication::exec();
}
