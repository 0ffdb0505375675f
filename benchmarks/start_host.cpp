// A host that ends with its first frame, and says how long after the time in its argument that was, in µs.
// Built with the library and without.
#include "host_window.h"

#ifdef ZENVOR_BENCH_WITH_LIBRARY
#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>
#endif

#include <QGuiApplication>

#include <chrono>
#include <cstdio>

namespace {

double microsecondsNow()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::micro>(now).count();
}

} // namespace

int main(int argc, char **argv)
{
    const double started = argc > 1 ? std::strtod(argv[1], nullptr) : microsecondsNow();
    QGuiApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("com.example.bench"));
#ifdef ZENVOR_BENCH_WITH_LIBRARY
    zenvor::setReportServiceUrl(QUrl(QStringLiteral("http://127.0.0.1:9"))); // nobody is there
    zenvor::Zenvor::shared().configure(QStringLiteral("token"), true);
#endif
    const zenvor::bench::HostWindow host;
    QObject::connect(host.window(), &QQuickWindow::frameSwapped, &application, [started] {
        std::printf("%f", microsecondsNow() - started);
        std::fflush(stdout);
        std::_Exit(0);
    });
    return QGuiApplication::exec();
}
