#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace zenvor {

/// Header fields in order. Names keep their letter case and are compared without regard to it.
class HttpHeaders
{
public:
    using Field = std::pair<QByteArray, QByteArray>;

    /// Replaces every field of that name.
    void set(QByteArray name, QByteArray value);
    void append(QByteArray name, QByteArray value) { m_fields.append({std::move(name), std::move(value)}); }
    /// The first value of that name.
    std::optional<QByteArray> value(QByteArrayView name) const;
    bool contains(QByteArrayView name) const { return value(name).has_value(); }
    const QList<Field> &fields() const { return m_fields; }

    /// Whether the field can be put on the wire by itself: the name a token, the value free of
    /// control characters. What cannot would break out of its line.
    static bool isWellFormed(QByteArrayView name, QByteArrayView value);

private:
    QList<Field> m_fields;
};

/// What to send. The body is shared, not copied.
struct HttpRequest
{
    QByteArray method = "GET";
    QUrl url;
    /// The URL letter by letter as the service wrote it, where that matters (signed URLs): sent
    /// instead of the normalised form of \c url, which it must be equal to. Empty: not needed.
    QByteArray urlAsReceived;
    HttpHeaders headers;
    QByteArray body;
    /// How long the transfer may stand still, in either direction, before it is timed out.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// Whether the body of a 2xx answer is wanted. One that is not is discarded as it comes, and not
    /// waited for beyond a bound.
    bool readsBody = true;
    /// Called now and then, on a thread of the session's, with the bytes of the body sent so far.
    std::function<void(qint64)> onProgress;
    /// Never on a pooled connection: when one of those dies under a request, the only cure is to send
    /// the request again.
    bool isSentOnce = false;
};

/// What came back, after redirects. A body of more than 1 MiB counts as unreadable and is empty.
struct HttpResponse
{
    /// 0: not an HTTP response.
    int status = 0;
    HttpHeaders headers;
    QByteArray body;
};

} // namespace zenvor
