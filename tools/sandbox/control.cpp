#include "sandbox/control.h"

#include "sandbox/pages.h"
#include "sandbox/protocol.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

// What arrived from an app may be anything; no browser is to run it, wherever it is opened.
constexpr auto filePolicy =
    "default-src 'none'; img-src 'self'; media-src 'self'; style-src 'unsafe-inline'; sandbox";

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

// Only names that the store itself knows lead to a file, so no path can be smuggled in.
Answer reportFile(const QByteArray &rest, const ReportStore &reports)
{
    const QList<QByteArray> parts = rest.split('/');
    const StoredReport *report =
        parts.size() == 2 ? reports.find(QString::fromLatin1(parts.first())) : nullptr;
    if (report == nullptr)
        return notFound();
    const QString name = QString::fromLatin1(parts.last());
    QByteArray type = "application/json"_ba;
    if (name != "report.json"_L1) {
        const auto file = std::ranges::find(report->attachments, name, &StoredAttachment::fileName);
        if (file == report->attachments.end())
            return notFound();
        type = file->mimeType.toLatin1();
    }
    Answer answer = bytesAnswer(200, type, {});
    answer.body = fileSource(reports.path(report->id) + u'/' + name);
    setHeader(answer.headers, "Content-Security-Policy"_ba, filePolicy);
    return answer.body ? answer : notFound();
}

} // namespace

Answer answerDeveloper(const RequestHead &head, const QByteArray &body, FaultQueue &faults,
                       const RequestLog &requests, const ReportStore &reports)
{
    const QByteArray path = head.path();
    const QByteArray reportPrefix = "/sandbox/reports/"_ba;
    if (path == "/sandbox/faults"_ba)
        return controlFaults(head, body, faults);
    if (head.method != "GET"_ba && head.method != "HEAD"_ba)
        return methodRefusal("GET, HEAD"_ba);
    if (path == "/"_ba)
        return inboxPage(reports);
    if (path == "/sandbox/requests"_ba)
        return requestList(requests);
    if (path == "/sandbox/reports"_ba)
        return reportList(reports);
    if (path.startsWith(reportPrefix))
        return reportFile(path.mid(reportPrefix.size()), reports);
    return notFound();
}

} // namespace zenvor::sandbox
