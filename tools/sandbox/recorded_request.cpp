#include "sandbox/recorded_request.h"

#include <QTime>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype keptRequests = 2000;
constexpr qint64 keptBodyBytes = 64 * 1024 * 1024;

} // namespace

void RequestLog::add(const RecordedRequest &request)
{
    m_requests << request;
    m_bodyBytes += request.body.size();
    while (m_requests.size() > keptRequests || (m_bodyBytes > keptBodyBytes && m_requests.size() > 1)) {
        m_bodyBytes -= m_requests.first().body.size();
        m_requests.removeFirst();
    }
}

void RequestLog::clear()
{
    m_requests.clear();
    m_bodyBytes = 0;
}

QString logLine(const RecordedRequest &request)
{
    QString line = QTime::currentTime().toString(u"HH:mm:ss.zzz"_s);
    line += u' ' + QString::fromLatin1(request.method) + u' ' + QString::fromLatin1(request.path()) + u' ';
    line += request.status == 0 ? u"no answer"_s : QString::number(request.status);
    if (request.isFault)
        line += u" (fault)"_s;
    if (!request.deviations.isEmpty())
        line += u" - "_s + request.deviations.join(u"; "_s);
    if (!request.notes.isEmpty())
        line += u" - note: "_s + request.notes.join(u"; "_s);
    // A path may hold any byte; a log line is one line.
    for (QChar &c : line) {
        if (!c.isPrint())
            c = u'?';
    }
    return line;
}

} // namespace zenvor::sandbox
