// What configure() costs the host: time on the caller's thread, and what is left running afterwards. The
// baseline does on the caller's thread what the library does in the background, apart from the network.
#include "pingqueue/device_ping_rules.h"
#include "platform/bundle.h"
#include "platform/device.h"
#include "platform/user_defaults.h"
#include "process_status.h"
#include "table.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

namespace {

using namespace zenvor;
using namespace Qt::StringLiterals;

template<typename F>
double microseconds(F function)
{
    QElapsedTimer timer;
    timer.start();
    function();
    return double(timer.nsecsElapsed()) / 1000;
}

void configure()
{
    Zenvor::shared().configure(u"token"_s, true);
}

void registerOnThisThread()
{
    const auto bundle = Bundle::main();
    const auto defaults = UserDefaults::forApplication(u"baseline"_s);
    const auto device = Device::identifierForVendor(bundle);
    const auto stored = defaults.data(u"queue"_s).value_or("[]");
    const auto entries = withDevicePing(devicePingQueueEntries(stored), *bundle.identifier(), *device, 0);
    defaults.setData(u"queue"_s, *toJson(entries));
}

// The figures of one process: first call and later calls, in µs.
int runCalls(int repetitions)
{
    std::printf("%f", microseconds(configure));
    for (int i = 0; i < repetitions; ++i)
        std::printf(" %f", microseconds(configure));
    std::fflush(stdout);
    std::_Exit(0);
}

// The figures of an idle process: wake-ups in the given time, threads, memory in MiB.
int runIdle(bool isConfigured, int seconds)
{
    if (isConfigured)
        configure();
    QTimer::singleShot(2000, [seconds] { // when the ping has failed
        const auto before = bench::wakeUps();
        QTimer::singleShot(seconds * 1000, [before] {
            std::printf("%f %lld %f", bench::wakeUpsSince(before), qint64(bench::threads().size()),
                        bench::memoryMiB("VmRSS:"));
            std::fflush(stdout);
            std::_Exit(0);
        });
    });
    return QCoreApplication::exec();
}

std::vector<double> figuresOf(const QStringList &arguments)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("the measured process failed: %s", process.readAllStandardError().constData());
    std::vector<double> figures;
    for (const auto &figure : process.readAllStandardOutput().split(' '))
        figures.push_back(figure.toDouble());
    return figures;
}

void printWithTail(const char *name, const std::vector<double> &values)
{
    std::printf("  %-42s %9.2f %9.2f %9.2f\n", name, bench::median(values), bench::quantile(values, 0.99),
                bench::quantile(values, 1));
}

void measureCalls(int processes, int repetitions)
{
    std::vector<double> cold, warm, baseline;
    for (int round = 0; round < processes; ++round) {
        const auto figures = figuresOf({u"--calls"_s, QString::number(repetitions)});
        cold.push_back(figures.front());
        warm.insert(warm.end(), figures.begin() + 1, figures.end());
        for (int i = 0; i < 10; ++i)
            baseline.push_back(microseconds(registerOnThisThread));
    }
    std::printf("\n%-44s %9s %9s %9s\n", "configure(), µs on the caller's thread", "median", "99 %",
                "longest");
    printWithTail("first call of a process", cold);
    printWithTail("later calls", warm);
    printWithTail("the same work on the caller's thread", baseline);
    std::printf("  %-42s %9.2f\n", "ratio, later calls to that work",
                bench::median(warm) / bench::median(baseline));
}

void measureIdle(int rounds, int seconds)
{
    std::vector<double> wakeUps[2], threads[2], memory[2];
    for (int round = 0; round < rounds; ++round) {
        for (const int with : {0, 1}) {
            const auto figures = figuresOf({u"--idle"_s, QString::number(with), QString::number(seconds)});
            wakeUps[with].push_back(figures.at(0));
            threads[with].push_back(figures.at(1));
            memory[with].push_back(figures.at(2));
        }
    }
    bench::printHeader(qPrintable(u"idle for %1 s after a failed ping, shake on"_s.arg(seconds)));
    const char *names[2][3] = {{"wake-ups, host alone", "threads, host alone", "memory MiB, host alone"},
                               {"wake-ups, configured", "threads, configured", "memory MiB, configured"}};
    for (const int with : {0, 1}) {
        bench::printRow(names[with][0], wakeUps[with]);
        bench::printRow(names[with][1], threads[with]);
        bench::printRow(names[with][2], memory[with]);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    qputenv("QT_LOGGING_RULES", "com.zenvor.sdk.*=false");
    QGuiApplication::setDesktopFileName(u"com.example.bench"_s);
    const QGuiApplication application(argc, argv);
    setReportServiceUrl(QUrl(u"http://127.0.0.1:9"_s)); // where nobody listens

    const auto arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--calls"_L1)
        return runCalls(arguments.value(2).toInt());
    if (arguments.value(1) == "--idle"_L1)
        return runIdle(arguments.value(2).toInt() == 1, arguments.value(3).toInt());
    const bool isSmoke = arguments.contains("--smoke"_L1);
    measureCalls(isSmoke ? 2 : 100, isSmoke ? 3 : 20);
    measureIdle(isSmoke ? 1 : 3, isSmoke ? 1 : 30);
    return 0;
}
