// The stored queue of pings with all its sixteen entries: to want one more, against writing a file of that
// size alone; to send three, against sending three without a queue.
#include "pingqueue/device_ping_queue.h"
#include "support/await.h"
#include "support/test_service.h"
#include "table.h"

#include <zenvor/report_service.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSaveFile>

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

void writeFile(const QString &path, const QByteArray &contents)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) < 0 || !file.commit())
        qFatal("the file cannot be written");
}

} // namespace

int main(int argc, char **argv)
{
    const bool isSmoke = argc > 1 && argv[1] == "--smoke"_ba;
    const int rounds = isSmoke ? 3 : 301;
    const QCoreApplication application(argc, argv);
    test::TestService service;
    service.reset(R"({"status":200,"times":0})");
    if (!setReportServiceUrl(service.url()))
        qFatal("the service cannot be used");
    const QTemporaryDir folder;
    const UserDefaults storage(folder.filePath(u"store"_s));
    DevicePingQueue queue(storage);
    const ReportClient client(ZenvorConfiguration(test::TestService::token(), false));
    const auto id = [](int number) {
        return u"00000000-0000-4000-8000-%1"_s.arg(number, 12, 10, QChar(u'0'));
    };
    const auto fill = [&] {
        for (int i = 0; i < 16; ++i)
            test::await(queue.enqueue(u"com.example.bench"_s, id(i)));
    };
    fill();

    std::vector<double> enqueue, file, enqueueRatio, flush, pings, flushRatio;
    for (int round = 0; round < rounds; ++round) {
        enqueue.push_back(
            microseconds([&] { test::await(queue.enqueue(u"com.example.bench"_s, id(round % 16))); }));
        const auto contents = storage.data(DevicePingQueue::storageKey()).value_or(QByteArray());
        file.push_back(microseconds([&] { writeFile(folder.filePath(u"baseline"_s), contents); }));
        enqueueRatio.push_back(enqueue.back() / file.back());
    }
    for (int round = 0; round < rounds / 5 + 1; ++round) {
        fill();
        flush.push_back(microseconds([&] { test::await(queue.flush(client, 3)); }));
        pings.push_back(microseconds([&] {
            for (int i = 0; i < 3; ++i)
                test::await(client.pingDevice(u"com.example.bench"_s, id(i)));
        }));
        flushRatio.push_back(flush.back() / pings.back());
    }
    bench::printHeader("ping queue, µs");
    bench::printRow("want a ping, sixteen stored", enqueue);
    bench::printRow("write a file of that size", file);
    bench::printRow("ratio", enqueueRatio);
    bench::printRow("send three from the queue", flush);
    bench::printRow("send three without it", pings);
    bench::printRow("ratio", flushRatio);
    return 0;
}
