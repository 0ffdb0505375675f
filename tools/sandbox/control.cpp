#include "sandbox/control.h"

#include "sandbox/protocol.h"
#include "sandbox/report_files.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

Answer arrayAnswer(const QJsonArray &array)
{
    return bytesAnswer(200, "application/json"_ba, QJsonDocument(array).toJson(QJsonDocument::Compact));
}

Answer notFound()
{
    return jsonAnswer(404, {{u"error"_s, u"there is nothing at this path"_s}});
}

QByteArray redactedBody(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (document.isObject())
        return QJsonDocument(withoutToken(document.object())).toJson(QJsonDocument::Compact);
    // A token may stand in it, but nobody can say where.
    return body.isEmpty() ? body : "(not JSON)"_ba;
}

QJsonObject toJson(const RecordedRequest &request)
{
    QJsonArray headers;
    for (const auto &[name, value] : request.headers)
        headers << QJsonArray{QString::fromLatin1(name), QString::fromLatin1(value)};
    return {{u"method"_s, QString::fromLatin1(request.method)},
            {u"target"_s, QString::fromLatin1(request.target)},
            {u"headers"_s, headers},
            {u"body"_s, QString::fromUtf8(redactedBody(request.body))},
            {u"body_size"_s, request.bodySize},
            {u"connection"_s, static_cast<qint64>(request.connection)},
            {u"status"_s, request.status},
            {u"deviations"_s, QJsonArray::fromStringList(request.deviations)},
            {u"notes"_s, QJsonArray::fromStringList(request.notes)},
            {u"fault"_s, request.isFault}};
}

QJsonObject toJson(const StoredReport &report)
{
    QJsonArray attachments;
    for (const StoredAttachment &file : report.attachments)
        attachments << QJsonObject{{u"file"_s, file.fileName},
                                   {u"kind"_s, file.kind},
                                   {u"mime_type"_s, file.mimeType},
                                   {u"bytes"_s, file.bytes}};
    return {{u"id"_s, report.id},
            {u"received_at"_s, report.receivedAt.toString(Qt::ISODateWithMs)},
            {u"report"_s, report.body},
            {u"attachments"_s, attachments}};
}

Answer requestList(const RequestLog &requests)
{
    QJsonArray list;
    for (const RecordedRequest &request : requests.all())
        list << toJson(request);
    return arrayAnswer(list);
}

Answer reportList(const ReportStore &reports)
{
    QJsonArray list;
    for (const StoredReport &report : reports.all())
        list << toJson(report);
    return arrayAnswer(list);
}

Answer faultList(const FaultQueue &faults)
{
    QJsonArray list;
    for (const Fault &fault : faults.waiting())
        list << faultToJson(fault);
    return arrayAnswer(list);
}

Answer controlFaults(const RequestHead &head, const QByteArray &body, FaultQueue &faults)
{
    if (head.method == "GET"_ba || head.method == "HEAD"_ba)
        return faultList(faults);
    if (head.method == "DELETE"_ba) {
        faults.clear();
        return faultList(faults);
    }
    if (head.method != "POST"_ba)
        return methodRefusal("GET, HEAD, POST, DELETE"_ba);
    // A page of another origin can post a form, but not this type without being asked first, and nobody
    // here answers that question.
    const QStringList deviations = contentTypeDeviations(head.headers);
    if (!deviations.isEmpty())
        return refusal(415, deviations);
    QString error;
    const auto parsed = parseFaults(body, &error);
    if (!parsed)
        return refusal(422, {error});
    for (const Fault &fault : *parsed)
        faults.add(fault);
    return faultList(faults);
}

Answer developerAnswer(const RequestHead &head, const QByteArray &body, const DeveloperDesk &desk)
{
    const QByteArray path = head.path();
    const QByteArray reportPrefix = "/sandbox/reports/"_ba;
    if (path == "/sandbox/faults"_ba)
        return controlFaults(head, body, desk.faults);
    if (head.method != "GET"_ba && head.method != "HEAD"_ba)
        return methodRefusal("GET, HEAD"_ba);
    if (path == "/"_ba)
        return inboxPage(desk.reports, desk.firstSteps, head.query());
    if (path == "/sandbox/events"_ba)
        return desk.events.open(desk.reports.isEmpty() ? QString() : desk.reports.newest().id);
    if (path == "/sandbox/requests"_ba)
        return requestList(desk.requests);
    if (path == "/sandbox/reports"_ba)
        return reportList(desk.reports);
    if (path.startsWith(reportPrefix))
        return reportFile(head, path.mid(reportPrefix.size()), desk.reports);
    return inboxResource(path).value_or(notFound());
}

} // namespace

Answer answerDeveloper(const RequestHead &head, const QByteArray &body, const DeveloperDesk &desk)
{
    Answer answer = developerAnswer(head, body, desk);
    // What testers wrote and pictured stays with this page: in no cache, and out of reach of other sites.
    setHeader(answer.headers, "Cache-Control"_ba, "no-store"_ba);
    setHeader(answer.headers, "Cross-Origin-Resource-Policy"_ba, "same-origin"_ba);
    setHeader(answer.headers, "Referrer-Policy"_ba, "no-referrer"_ba);
    return answer;
}

} // namespace zenvor::sandbox
