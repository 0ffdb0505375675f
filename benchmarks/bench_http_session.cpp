// How long uploads through the library's session take, against the curl program doing the same
// requests to the same service in turn with it: five PUTs of 20 MB, one after the other.
#include "platform/http_session.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <sys/resource.h>

namespace {

using namespace zenvor;
using namespace Qt::StringLiterals;

struct Plan
{
    int rounds = 15;
    int files = 5;
    int megabytes = 20;
};

struct Sample
{
    double wallMs = 0;
    double cpuMs = 0;
};

double cpuMs(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    const auto ms = [](const timeval &time) {
        return double(time.tv_sec) * 1000 + double(time.tv_usec) / 1000;
    };
    return ms(usage.ru_utime) + ms(usage.ru_stime);
}

// The longest time between two turns of the main thread's event loop.
class StallMeter
{
public:
    StallMeter()
    {
        m_turn.start();
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_longest = std::max(m_longest, m_turn.nsecsElapsed());
            m_turn.restart();
        });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(1);
    }
    double longestMs() const { return double(m_longest) / 1e6; }

private:
    QTimer m_timer;
    QElapsedTimer m_turn;
    qint64 m_longest = 0;
};

Task<> uploadAll(QUrl url, QByteArray body, int files, bool *isDone)
{
    for (int i = 0; i < files; ++i) {
        HttpRequest put;
        put.method = "PUT"_ba;
        put.url = url;
        put.headers.set("Content-Type"_ba, "video/mp4"_ba);
        put.body = body;
        put.readsBody = false;
        const auto response = co_await HttpSession::shared().send(std::move(put));
        if (response.status != 200)
            qFatal("the service answered %d", response.status);
    }
    *isDone = true;
}

Sample runSession(const QUrl &url, const QByteArray &body, const Plan &plan, double *longestStallMs)
{
    QElapsedTimer timer;
    timer.start();
    const double cpu = cpuMs(RUSAGE_SELF);
    const StallMeter stalls;
    bool isDone = false;
    uploadAll(url, body, plan.files, &isDone); // detached: sets isDone
    while (!isDone)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    *longestStallMs = std::max(*longestStallMs, stalls.longestMs());
    return {double(timer.nsecsElapsed()) / 1e6, cpuMs(RUSAGE_SELF) - cpu};
}

double curlStartMs()
{
    QElapsedTimer timer;
    timer.start();
    QProcess curl;
    curl.start(u"curl"_s, {u"--version"_s});
    curl.waitForFinished(-1);
    return double(timer.nsecsElapsed()) / 1e6;
}

Sample runCurl(const QUrl &url, const QString &file, const Plan &plan)
{
    QStringList arguments{u"--silent"_s, u"--show-error"_s, u"--fail"_s, u"--header"_s, u"Expect:"_s};
    for (int i = 0; i < plan.files; ++i)
        arguments << u"--upload-file"_s << file << url.toString() + u'/' + QString::number(i);
    QElapsedTimer timer;
    timer.start();
    const double cpu = cpuMs(RUSAGE_CHILDREN);
    QProcess curl;
    curl.start(u"curl"_s, arguments);
    if (!curl.waitForFinished(-1) || curl.exitCode() != 0)
        qFatal("curl failed: %s", curl.readAllStandardError().constData());
    return {double(timer.nsecsElapsed()) / 1e6, cpuMs(RUSAGE_CHILDREN) - cpu};
}

void printRow(const char *name, std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const auto at = [&values](double part) {
        return values[size_t(part * double(values.size() - 1))];
    };
    std::printf("%-28s %9.2f %9.2f %9.2f\n", name, at(0.5), at(0.1), at(0.9));
}

QUrl startSandbox(QProcess *sandbox, const QString &folder)
{
    sandbox->start(QStringLiteral(SANDBOX_PROGRAM),
                   {u"--quiet"_s, u"--folder"_s, folder, u"--fault"_s,
                    uR"({"path":"/storage/bench","times":0,"status":200})"_s});
    if (!sandbox->waitForReadyRead(10000))
        qFatal("the sandbox does not start");
    const auto line = QString::fromUtf8(sandbox->readLine()).trimmed();
    return QUrl(line.section(u' ', -1) + "/storage/bench"_L1);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Plan plan;
    if (QCoreApplication::arguments().contains("--smoke"_L1))
        plan = {.rounds = 2, .files = 2, .megabytes = 1};

    const QTemporaryDir folder;
    QProcess sandbox;
    const auto url = startSandbox(&sandbox, folder.filePath(u"inbox"_s));
    const QByteArray body(plan.megabytes * 1000 * 1000, 'x');
    QFile file(folder.filePath(u"body"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(body) != body.size() || !file.flush())
        qFatal("no space for the file that curl sends");

    std::vector<double> sessionWall, curlWall, curlStart, wallRatio, sessionCpu, curlCpu;
    double longestStallMs = 0;
    for (int round = -1; round < plan.rounds; ++round) {
        const auto ours = runSession(url, body, plan, &longestStallMs);
        const auto theirs = runCurl(url, file.fileName(), plan);
        if (round < 0) { // warms the caches
            longestStallMs = 0;
            continue;
        }
        sessionWall.push_back(ours.wallMs);
        curlWall.push_back(theirs.wallMs);
        curlStart.push_back(curlStartMs());
        wallRatio.push_back(ours.wallMs / theirs.wallMs);
        sessionCpu.push_back(ours.cpuMs);
        curlCpu.push_back(theirs.cpuMs);
    }
    std::printf("%d x %d MB, PUT over http, %d rounds\n%-28s %9s %9s %9s\n", plan.files, plan.megabytes,
                plan.rounds, "", "median", "10 %", "90 %");
    printRow("session, wall ms", sessionWall);
    printRow("curl, wall ms", curlWall);
    printRow("of which its start", curlStart);
    printRow("session / curl", wallRatio);
    printRow("session, CPU ms", sessionCpu);
    printRow("curl, CPU ms", curlCpu);
    std::printf("%-28s %9.2f\n", "longest main stall, ms", longestStallMs);
    sandbox.terminate();
    sandbox.waitForFinished();
    return 0;
}
