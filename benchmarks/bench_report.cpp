// A report with five attachments through the library's client, against the curl program doing the same
// sixteen requests to the same service. Each sample is a fresh process, ours and curl's in turns.
#include "client/report_client.h"
#include "platform/curl_http_session.h"
#include "process_status.h"
#include "table.h"
#ifdef ZENVOR_BENCH_QT_SESSION
#include "platform/qt_http_session.h"
#endif

#include <zenvor/report_service.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>

namespace {

using namespace zenvor;
using namespace Qt::StringLiterals;

const QList<qint64> fullSizes{1'000, 50'000, 1'000'000, 5'000'000, 20'000'000};
const QList<qint64> smokeSizes{1'000, 2'000, 3'000, 4'000, 50'000};

struct Sample
{
    double wallMs = 0;
    double cpuMs = 0;
    double extraMiB = 0;
    double stallMs = 0;
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

void forgetPeakMemory()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
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

FeedbackReportPayload payload()
{
    FeedbackDraft draft;
    draft.message = u"It breaks"_s;
    return *makeFeedbackReportPayload(draft, u"token"_s, {}, {}, QDateTime::currentDateTimeUtc());
}

Task<> submit(ReportClient client, QList<ReportUploadAttachment> attachments)
{
    try {
        co_await client.submit(payload(), std::move(attachments));
        QCoreApplication::exit(0);
    } catch (const Error &error) {
        qFatal("%s", qPrintable(error.localizedDescription()));
    }
}

HttpSession *makeSession(const QString &name, const QString &caFile)
{
#ifdef ZENVOR_BENCH_QT_SESSION
    if (name == "qt"_L1)
        return new QtHttpSession(Clock::system(), caFile);
#endif
    return name == "curl"_L1 ? new CurlHttpSession(Clock::system(), caFile) : nullptr;
}

// The process of one sample: bench_report --child SESSION URL CA-FILE FILE…; prints its figures.
int runChild(const QStringList &arguments)
{
    setReportServiceUrl(QUrl(arguments.at(3)));
    QList<ReportUploadAttachment> attachments;
    for (const auto &name : arguments.mid(5)) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(name));
        attachments.append({file.readAll(), u"video/mp4"_s, u"video"_s});
    }
    auto *session = makeSession(arguments.at(2), arguments.at(4)); // ends with the process
    forgetPeakMemory();
    const double memory = bench::memoryMiB("VmRSS:");
    const double cpu = cpuMs(RUSAGE_SELF);
    const StallMeter stalls;
    QElapsedTimer timer;
    timer.start();
    const ReportClient client(ZenvorConfiguration(u"token"_s, false), *session);
    QTimer::singleShot(0, [&] { submit(client, attachments); }); // detached: ends the event loop
    QCoreApplication::exec();
    std::printf("%f %f %f %f\n", double(timer.nsecsElapsed()) / 1e6, cpuMs(RUSAGE_SELF) - cpu,
                bench::memoryMiB("VmHWM:") - memory, stalls.longestMs());
    std::fflush(stdout);
    std::_Exit(0); // the end of the process is another benchmark's subject
}

QByteArray runProgram(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(program), process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

Sample runOurs(const QString &session, const QUrl &service, const QString &caFile, const QStringList &files)
{
    const auto output = runProgram(QCoreApplication::applicationFilePath(),
                                   QStringList{u"--child"_s, session, service.toString(), caFile} + files);
    const auto figures = output.trimmed().split(' ');
    return {figures.at(0).toDouble(), figures.at(1).toDouble(), figures.at(2).toDouble(),
            figures.at(3).toDouble()};
}

Sample runCurl(const QUrl &service, const QString &caFile, const QStringList &files)
{
    QStringList all;
    const auto add = [&](const QString &path, const QStringList &what) {
        if (!all.isEmpty())
            all << u"--next"_s;
        all << u"--silent"_s << u"--show-error"_s << u"--fail"_s << u"--output"_s << u"/dev/null"_s;
        all << u"--cacert"_s << caFile << u"--header"_s << u"Expect:"_s;
        all << what << service.toString() + path;
    };
    const QStringList json{u"--header"_s, u"Content-Type: application/json"_s, u"--data"_s, u"{}"_s};
    for (const auto &file : files) {
        add(u"/v1/sdk/uploads/init"_s, json);
        add(u"/storage/x"_s, {u"--header"_s, u"Content-Type: video/mp4"_s, u"--upload-file"_s, file});
        add(u"/v1/sdk/uploads/complete"_s, json);
    }
    add(u"/v1/sdk/reports"_s, json);
    QElapsedTimer timer;
    timer.start();
    const double cpu = cpuMs(RUSAGE_CHILDREN);
    runProgram(u"curl"_s, all);
    return {double(timer.nsecsElapsed()) / 1e6, cpuMs(RUSAGE_CHILDREN) - cpu};
}

double curlStartMs()
{
    QElapsedTimer timer;
    timer.start();
    runProgram(u"curl"_s, {u"--version"_s});
    return double(timer.nsecsElapsed()) / 1e6;
}

// The same answers for both: nothing is stored, every request counts.
QUrl startSandbox(QProcess *sandbox, const QStringList &options, const QString &caFile)
{
    sandbox->start(QStringLiteral(SANDBOX_PROGRAM), QStringList{u"--quiet"_s} + options);
    if (!sandbox->waitForReadyRead(10000))
        qFatal("the sandbox does not start");
    const QUrl url(QString::fromUtf8(sandbox->readLine()).trimmed().section(u' ', -1));
    const auto fault = [](const QString &path, const QString &body) {
        return QJsonObject{{u"path"_s, path}, {u"times"_s, 0}, {u"status"_s, 200}, {u"body"_s, body}};
    };
    const auto init =
        u"{\"ok\":true,\"upload_id\":\"u\",\"upload_url\":\"%1/storage/x\"}"_s.arg(url.toString());
    const QJsonArray faults{fault(u"/v1/sdk/uploads/init"_s, init), fault(u"/storage/"_s, {}),
                            fault(u"/v1/sdk/uploads/complete"_s, u"{\"ok\":true}"_s),
                            fault(u"/v1/sdk/reports"_s, {})};
    runProgram(u"curl"_s,
               {u"--silent"_s, u"--fail"_s, u"--cacert"_s, caFile, u"--header"_s,
                u"Content-Type: application/json"_s, u"--data"_s,
                QString::fromUtf8(QJsonDocument(faults).toJson(QJsonDocument::Compact)),
                url.toString() + "/sandbox/faults"_L1});
    return url;
}

void measure(const QString &session, const QUrl &service, const QString &caFile, const QStringList &files,
             int rounds)
{
    std::vector<double> wall, cpu, memory, stall, curlWall, curlCpu, curlStart, ratio;
    for (int round = -1; round < rounds; ++round) { // the first one warms the caches
        const auto ours = runOurs(session, service, caFile, files);
        const auto theirs = runCurl(service, caFile, files);
        const double start = curlStartMs();
        if (round < 0)
            continue;
        wall.push_back(ours.wallMs);
        cpu.push_back(ours.cpuMs);
        memory.push_back(ours.extraMiB);
        stall.push_back(ours.stallMs);
        curlWall.push_back(theirs.wallMs);
        curlCpu.push_back(theirs.cpuMs);
        curlStart.push_back(start);
        ratio.push_back(ours.wallMs / (theirs.wallMs - start));
    }
    const auto title = "report over "_L1 + service.scheme() + ", session "_L1 + session;
    bench::printHeader(qPrintable(title));
    bench::printRow("wall, ms", wall);
    bench::printRow("curl program, wall, ms", curlWall);
    bench::printRow("of which its start, ms", curlStart);
    bench::printRow("ratio, start of the program taken off", ratio);
    bench::printRow("CPU, ms", cpu);
    bench::printRow("curl program, CPU, ms", curlCpu);
    bench::printRow("peak memory over the payload, MiB", memory);
    bench::printRow("longest stall of the main thread, ms", stall);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--child"_L1)
        return runChild(arguments);
    const bool isSmoke = arguments.contains("--smoke"_L1);

    const QTemporaryDir folder;
    QStringList files;
    for (const auto size : isSmoke ? smokeSizes : fullSizes) {
        files.append(folder.filePath(QString::number(size)));
        QFile file(files.last());
        if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(size, 'x')) != size)
            qFatal("no space for the attachments");
    }
    const auto certificate = folder.filePath(u"certificate.pem"_s);
    const auto key = folder.filePath(u"key.pem"_s);
    runProgram(
        u"openssl"_s,
        u"req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
        "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -keyout %1 -out %2"_s.arg(key, certificate)
            .split(u' '));

    QProcess plain, secure;
    const QStringList inbox{u"--folder"_s, folder.filePath(u"inbox"_s)};
    const auto http = startSandbox(&plain, inbox, certificate);
    const auto https = startSandbox(
        &secure, inbox + QStringList{u"--certificate"_s, certificate, u"--key"_s, key}, certificate);
    QStringList sessions{u"curl"_s};
#ifdef ZENVOR_BENCH_QT_SESSION
    sessions.append(u"qt"_s);
#endif
    for (const auto &session : sessions) {
        measure(session, http, certificate, files, isSmoke ? 1 : 15);
        measure(session, https, certificate, files, isSmoke ? 1 : 15);
    }
    for (auto *sandbox : {&plain, &secure}) {
        sandbox->terminate();
        sandbox->waitForFinished();
    }
    return 0;
}
