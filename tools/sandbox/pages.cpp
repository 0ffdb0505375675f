#include "sandbox/pages.h"

#include "sandbox/report_store.h"

#include <QLocale>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr auto pagePolicy =
    "default-src 'none'; style-src 'unsafe-inline'; img-src 'self'; media-src 'self'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

const QString pageStart = uR"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Zenvor sandbox inbox</title>
<style>
:root { color-scheme: light dark; }
body { font: 1rem/1.5 system-ui, sans-serif; max-width: 46rem; margin: 2rem auto; padding: 0 1rem; }
article { border-top: 1px solid GrayText; padding: 1rem 0; }
h2 { font-size: 1.05rem; margin: 0; }
.message { white-space: pre-wrap; overflow-wrap: anywhere; }
.facts { color: GrayText; margin: 0; overflow-wrap: anywhere; }
</style>
</head>
<body>
<h1>Reports</h1>
)"_s;

QString escaped(const QJsonValue &value)
{
    return value.toString().toHtmlEscaped();
}

QString facts(const QJsonObject &report)
{
    const QJsonObject device = report.value("device"_L1).toObject();
    const QJsonObject app = report.value("app"_L1).toObject();
    QStringList parts = {
        escaped(app.value("bundle_id"_L1)) + u' ' + escaped(app.value("version"_L1)) + u" ("_s
            + escaped(app.value("build"_L1)) + u')',
        escaped(device.value("model"_L1)) + u", "_s + escaped(device.value("os_name"_L1)) + u' '
            + escaped(device.value("os_version"_L1)),
    };
    if (report.contains("occurrence_frequency"_L1))
        parts << u"happens: "_s + escaped(report.value("occurrence_frequency"_L1)).replace(u'_', u' ');
    if (report.contains("email"_L1))
        parts << u"contact: "_s + escaped(report.value("email"_L1));
    return parts.join(u" · "_s);
}

QString attachmentItem(const StoredReport &report, const StoredAttachment &file)
{
    const QString link = u"/sandbox/reports/%1/%2"_s.arg(report.id, file.fileName).toHtmlEscaped();
    return u"<li><a href=\"%1\">%2</a>, %3</li>\n"_s.arg(link, file.fileName.toHtmlEscaped(),
                                                         QLocale::c().formattedDataSize(file.bytes));
}

QString article(const StoredReport &report)
{
    const QString moment = report.receivedAt.toString(u"yyyy-MM-dd HH:mm:ss 'UTC'"_s);
    QString html = u"<article>\n<h2>%1, <time datetime=\"%2\">%3</time></h2>\n"_s.arg(
        escaped(report.body.value("category"_L1)), report.receivedAt.toString(Qt::ISODate), moment);
    html += u"<p class=\"message\">"_s + escaped(report.body.value("message"_L1)) + u"</p>\n"_s;
    html += u"<p class=\"facts\">"_s + facts(report.body) + u"</p>\n<ul>\n"_s;
    for (const StoredAttachment &file : report.attachments)
        html += attachmentItem(report, file);
    html +=
        u"<li><a href=\"/sandbox/reports/%1/report.json\">report.json</a></li>\n</ul>\n</article>\n"_s.arg(
            report.id.toHtmlEscaped());
    return html;
}

} // namespace

Answer inboxPage(const ReportStore &reports)
{
    QString html = pageStart;
    if (reports.isEmpty())
        html += u"<p>No report has arrived yet.</p>\n"_s;
    for (const StoredReport &report : reports.all())
        html += article(report);
    html += u"</body>\n</html>\n"_s;
    Answer answer = bytesAnswer(200, "text/html; charset=utf-8"_ba, html.toUtf8());
    setHeader(answer.headers, "Content-Security-Policy"_ba, pagePolicy);
    setHeader(answer.headers, "Cache-Control"_ba, "no-store"_ba);
    return answer;
}

} // namespace zenvor::sandbox
