// What it costs to write a full report as JSON, against writing a ready-made JSON object of the same
// content: the difference is what our records add.
#include "client/feedback_report.h"
#include "client/wire_records.h"
#include "table.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

using namespace zenvor;
using namespace Qt::StringLiterals;

namespace {

FeedbackReportPayload fullPayload()
{
    FeedbackReportPayload payload;
    payload.token = u"token"_s;
    payload.category = u"bug"_s;
    payload.message = u"It breaks when I press the button. "_s.repeated(60);
    payload.occurrenceFrequency = u"few_times"_s;
    payload.email = u"a@example.com"_s;
    payload.allowContact = true;
    payload.screenshotUploadId = u"u1"_s;
    payload.attachmentUploadIds = QStringList{u"u1"_s, u"u2"_s, u"u3"_s, u"u4"_s, u"u5"_s};
    payload.device = {u"m"_s,   u"x86_64"_s, u"Linux"_s, u"12"_s,   u"en_US"_s,
                      u"UTC"_s, 1920,        1080,       u"dark"_s, u"ID"_s};
    payload.app = {u"com.example.app"_s, u"1.2"_s, u"7"_s};
    payload.occurredAt = u"2026-11-14T23:35:30Z"_s;
    return payload;
}

template<typename F>
double microseconds(int repetitions, F function)
{
    QElapsedTimer timer;
    timer.start();
    qsizetype bytes = 0;
    for (int i = 0; i < repetitions; ++i)
        bytes += function().size();
    if (bytes == 0)
        qFatal("nothing was written");
    return double(timer.nsecsElapsed()) / 1000 / repetitions;
}

} // namespace

int main(int argc, char **argv)
{
    const bool isSmoke = argc > 1 && argv[1] == "--smoke"_ba;
    const int rounds = isSmoke ? 2 : 31;
    const int repetitions = isSmoke ? 10 : 2000;
    const auto payload = fullPayload();
    const auto ready = QJsonDocument::fromJson(toJson(payload));

    std::vector<double> ours, baseline, ratio;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(microseconds(repetitions, [&payload] { return toJson(payload); }));
        baseline.push_back(
            microseconds(repetitions, [&ready] { return ready.toJson(QJsonDocument::Compact); }));
        ratio.push_back(ours.back() / baseline.back());
    }
    bench::printHeader("encode a full report (2 KB of text)");
    bench::printRow("records to JSON, µs", ours);
    bench::printRow("ready-made object to JSON, µs", baseline);
    bench::printRow("ratio", ratio);
    return 0;
}
