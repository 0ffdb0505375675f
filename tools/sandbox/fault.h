#pragma once

#include "sandbox/http_headers.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace zenvor::sandbox {

/// How the service is to misbehave towards some requests. The fields combine; a fault that says nothing
/// about what is answered (only how it is sent, such as delayMs) leaves the handling of the request alone.
struct Fault
{
    /// A place in an answer. InHeaders is after half of the head; InBody after half of the body, at most 64
    /// KB.
    enum class Place { Nowhere, BeforeHeaders, InHeaders, InBody };
    enum class When { Head, Body };

    // Which requests.
    QByteArray method; ///< empty: every one
    QString path; ///< a prefix; empty: the endpoints and the storage
    int skip = 0; ///< requests let through first
    int times = 1; ///< 0: always

    // What is answered.
    std::optional<int> status; ///< default 200, or 307 with a redirect
    Headers headers;
    QList<QByteArray> withoutHeaders; ///< taken out of the answer; in JSON a header that is null
    std::optional<QByteArray> body;
    std::optional<qint64> bodySize; ///< that many bytes of filler
    bool endless = false; ///< filler that never stops
    QString redirect; ///< a Location header; {target} in it stands for the request's path and query
    qint64 padding = 0; ///< a member of so many letters more in the JSON object that is answered
    std::optional<QByteArray> garbage; ///< these bytes in place of an answer, then the end
    bool gzip = false;
    /// Process the request (store the report) before misbehaving. Unset: only if the fault leaves the answer
    /// alone.
    std::optional<bool> handle;

    // How it is sent.
    QList<int> informational; ///< statuses of 1xx heads, sent before the delay
    int delayMs = 0;
    int dripMs = 0; ///< one byte of the body each so many milliseconds
    bool dripHeaders = false; ///< the head too
    bool chunked = false;
    bool badChunk = false; ///< chunked, with a size line that is none after the first chunk
    std::optional<qint64> contentLength; ///< a lie
    Place stall = Place::Nowhere; ///< stop there, keep the connection
    Place cut = Place::Nowhere; ///< end the connection there, orderly
    Place reset = Place::Nowhere; ///< end the connection there with an RST

    // When.
    When when = When::Body; ///< Head: without waiting for the request's body
    bool stopReading =
        false; ///< the request's body stays unread; without an answer of its own, nothing is said

    bool matches(const QByteArray &requestMethod, const QString &requestPath) const;
    bool leavesAnswerAlone() const;
    bool handlesRequest() const { return handle.value_or(leavesAnswerAlone()); }
};

/// Nothing if \a object is no fault; \a error then names every mistake.
std::optional<Fault> parseFault(const QJsonObject &object, QString *error);
/// The same for JSON text that holds one object or an array of them.
std::optional<QList<Fault>> parseFaults(const QByteArray &json, QString *error);
/// The form that parseFault() reads; defaults are left out.
QJsonObject faultToJson(const Fault &fault);

} // namespace zenvor::sandbox
