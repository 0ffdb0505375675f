// Ends by exit() so many milliseconds after it has begun to read videos.
#include "platform/video.h"

#include <QGuiApplication>
#include <QTimer>

#include <cstdlib>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    for (int i = 0; i < 5; ++i)
        zenvor::videoFrame(arguments.at(1), std::chrono::milliseconds(100), 400, {});
    QTimer::singleShot(arguments.at(2).toInt(), [] { std::exit(0); });
    return QGuiApplication::exec();
}
