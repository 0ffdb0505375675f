#include "fuzz_input.h"
#include "sandbox/fault.h"
#include "sandbox/protocol.h"
#include "sandbox/report_markup.h"
#include "sandbox/report_store.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <algorithm>

using namespace zenvor::sandbox;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

template<typename Record>
void requireReading(const Reading<Record> &reading)
{
    require(reading.isJson || !reading.deviations.isEmpty(), "what is no JSON is wrong");
    require(!reading.deviations.isEmpty()
                || (!reading.record.token.isNull() && !reading.record.bundleId.isNull()),
            "a request that is right has a token and an app");
}

void readRequests(const QByteArray &body)
{
    requireReading(readValidateRequest(body));
    requireReading(readPingRequest(body));
    requireReading(readCompleteRequest(body));
    const auto init = readInitRequest(body);
    requireReading(init);
    require(!init.deviations.isEmpty() || (init.record.bytes > 0 && init.record.bytes <= uploadLimit),
            "an upload has a size");
    const auto report = readReportRequest(body);
    requireReading(report);
    require(!report.deviations.isEmpty() || report.record.attachmentIds.size() <= 5,
            "a report has no more than five attachments");
}

bool isWireText(const QByteArray &text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7f; });
}

void readFaults(const QByteArray &json)
{
    QString error;
    const auto faults = parseFaults(json, &error);
    require(faults.has_value() == error.isEmpty(), "a mistake is named");
    if (!faults)
        return;
    for (const Fault &fault : *faults) {
        require(fault.skip >= 0 && fault.times >= 0 && fault.delayMs >= 0 && fault.dripMs >= 0,
                "a fault counts from 0");
        require(std::all_of(
                    fault.headers.begin(), fault.headers.end(),
                    [](const auto &field) { return isWireText(field.first) && isWireText(field.second); }),
                "the headers of a fault keep to their lines");
        const auto object = faultToJson(fault);
        const auto again = parseFault(object, &error);
        require(again.has_value(), "a fault that is listed can be sent back");
        require(faultToJson(*again) == object, "a fault is the same when it is read again");
    }
}

QJsonValue withoutMarkup(const QJsonValue &value)
{
    if (value.isString())
        return value.toString().replace(QRegularExpression(u"[<>&\"']"_s), u"x"_s);
    if (!value.isObject())
        return value;
    auto object = value.toObject();
    for (auto member : object)
        member = withoutMarkup(QJsonValue(member));
    return object;
}

QStringList tagsOf(const QString &markup)
{
    static const QRegularExpression tag(u"</?[a-z0-9]+"_s);
    QStringList tags;
    for (auto found = tag.globalMatch(markup); found.hasNext();)
        tags << found.next().captured();
    return tags;
}

/// Only texts are compared: the same report with nothing in it that could be taken for markup has the same
/// tags.
void showReport(const QJsonObject &body)
{
    StoredReport report;
    report.id = u"20260101-000000-000"_s;
    report.receivedAt = QDateTime::fromSecsSinceEpoch(1767225600, Qt::UTC);
    report.body = body;
    const auto markup = reportMarkup(report);
    report.body = withoutMarkup(body).toObject();
    const auto harmless = reportMarkup(report);
    require(tagsOf(markup) == tagsOf(harmless), "what a report says is text, never markup");
    require(markup.count(u'<') == harmless.count(u'<') && markup.count(u'"') == harmless.count(u'"'),
            "what a report says ends no tag and no attribute");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    makeApplication();
    const auto body = bytesOf(data, size);
    readRequests(body);
    readFaults(body);
    if (const auto document = QJsonDocument::fromJson(body); document.isObject())
        showReport(document.object());
    return 0;
}
