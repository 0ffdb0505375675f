#include "sandbox/inbox_page.h"

#include "sandbox/page_template.h"
#include "sandbox/report_markup.h"
#include "sandbox/report_store.h"

#include <algorithm>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr auto pagePolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; media-src 'self'; "
    "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

constexpr qsizetype reportsOnAPage = 100;

/// The index of the first report on the page.
qsizetype startOfPage(const QList<StoredReport> &reports, const QByteArray &query)
{
    const QByteArray key = "before="_ba;
    if (!query.startsWith(key))
        return 0;
    const QString id = QString::fromLatin1(query.mid(key.size()));
    const auto last = std::ranges::find(reports, id, &StoredReport::id);
    return last == reports.end() ? 0 : last - reports.begin() + 1;
}

QString countText(qsizetype count)
{
    if (count == 0)
        return u"no reports yet"_s;
    return count == 1 ? u"1 report"_s : u"%1 reports"_s.arg(count);
}

QString pageLinks(const QList<StoredReport> &reports, qsizetype start, qsizetype end)
{
    QString links;
    if (start > 0)
        links += u"<a href=\"/\">Newest reports</a>"_s;
    if (end < reports.size())
        links += u"<a href=\"/?before=%1\" rel=\"next\">Older reports</a>"_s.arg(
            reports.at(end - 1).id.toHtmlEscaped());
    return links;
}

QString welcome(const FirstSteps &steps)
{
    return filledTemplate(u"welcome.html"_s,
                          {{u"origin"_s, steps.origin.toHtmlEscaped()},
                           {u"token"_s, steps.token.toHtmlEscaped()},
                           {u"bundle"_s, steps.bundleId.toHtmlEscaped()}});
}

} // namespace

Answer inboxPage(const ReportStore &reports, const FirstSteps &steps, const QByteArray &query)
{
    const QList<StoredReport> &all = reports.all();
    const qsizetype start = startOfPage(all, query);
    const qsizetype end = std::min(all.size(), start + reportsOnAPage);
    QString articles;
    for (qsizetype i = start; i < end; ++i)
        articles += reportMarkup(all.at(i));
    // An older page stays what it is: a new report belongs on the first one.
    const QString html = filledTemplate(u"inbox.html"_s,
                                        {{u"count"_s, countText(all.size())},
                                         {u"welcome"_s, all.isEmpty() ? welcome(steps) : QString()},
                                         {u"follows"_s, start == 0 ? u" data-follows"_s : QString()},
                                         {u"reports"_s, articles},
                                         {u"pages"_s, pageLinks(all, start, end)}});
    Answer answer = bytesAnswer(200, "text/html; charset=utf-8"_ba, html.toUtf8());
    setHeader(answer.headers, "Content-Security-Policy"_ba, pagePolicy);
    return answer;
}

std::optional<Answer> inboxResource(const QByteArray &path)
{
    if (path == "/sandbox/inbox/inbox.css"_ba)
        return bytesAnswer(200, "text/css; charset=utf-8"_ba, inboxFile(u"inbox.css"_s));
    if (path == "/sandbox/inbox/inbox.js"_ba)
        return bytesAnswer(200, "text/javascript; charset=utf-8"_ba, inboxFile(u"inbox.js"_s));
    // A browser that shows a picture alone asks for an icon there.
    if (path == "/sandbox/inbox/icon.svg"_ba || path == "/favicon.ico"_ba)
        return bytesAnswer(200, "image/svg+xml"_ba, inboxFile(u"icon.svg"_s));
    return {};
}

} // namespace zenvor::sandbox
