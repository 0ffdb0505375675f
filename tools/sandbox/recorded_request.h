#pragma once

#include "sandbox/http_headers.h"

#include <QMetaType>
#include <QStringList>

namespace zenvor::sandbox {

/// One request as it arrived, and what came of it.
struct RecordedRequest
{
    QByteArray method;
    QByteArray target; ///< exactly as on the wire
    Headers headers;
    QByteArray body; ///< empty for a storage PUT of more than 64 KB; see bodySize
    qint64 bodySize = 0; ///< bytes received of the body
    quint64 connection = 0; ///< the same number for requests on one connection
    int status = 0; ///< 0: no status was sent
    QStringList deviations;
    QStringList notes; ///< remarkable, but allowed
    bool isFault = false; ///< the answer was a fault's

    QByteArray path() const { return target.split('?').first(); }
};

/// The recent requests, oldest first, bounded in number and in memory.
class RequestLog
{
public:
    void add(const RecordedRequest &request);
    void clear();
    const QList<RecordedRequest> &all() const { return m_requests; }

private:
    QList<RecordedRequest> m_requests;
    qint64 m_bodyBytes = 0;
};

/// One line for a person: time, method, path without the query, status, what was wrong.
QString logLine(const RecordedRequest &request);

} // namespace zenvor::sandbox

Q_DECLARE_METATYPE(zenvor::sandbox::RecordedRequest)
