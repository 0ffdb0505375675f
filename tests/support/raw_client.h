#pragma once

#include "support/test_service.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSslSocket>
#include <QTimer>

#include <cerrno>
#include <chrono>
#include <stdexcept>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zenvor::test {

constexpr auto validatePath = "/v1/sdk/validate";
constexpr auto pingPath = "/v1/sdk/devices/ping";
constexpr auto initPath = "/v1/sdk/uploads/init";
constexpr auto completePath = "/v1/sdk/uploads/complete";
constexpr auto reportPath = "/v1/sdk/reports";

/// Runs the event loop until \a condition holds; false if it does not in time. Looks after every event
/// and every 5 ms: the waits of Qt Test sleep 10 ms at each step of an exchange.
template<typename Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(20))
{
    const QDeadlineTimer deadline(limit);
    QTimer tick;
    tick.start(std::chrono::milliseconds(5));
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

struct Reply
{
    int status = 0;
    QByteArray head;
    QByteArray body;

    QJsonObject json() const { return QJsonDocument::fromJson(body).object(); }
    QByteArray header(const QByteArray &name) const
    {
        const qsizetype at = head.toLower().indexOf("\r\n" + name.toLower() + ": ");
        const qsizetype from = at + name.size() + 4;
        return at < 0 ? QByteArray() : head.mid(from, head.indexOf('\r', from) - from);
    }
};

/// A client that knows no more of HTTP than where an answer ends.
class RawClient
{
public:
    /// Speaks TLS, with whatever certificate, if \a origin says https.
    explicit RawClient(const QUrl &origin)
    {
        const auto port = static_cast<quint16>(origin.port());
        socket.setPeerVerifyMode(QSslSocket::VerifyNone);
        if (origin.scheme() == QLatin1String("https"))
            socket.connectToHostEncrypted(origin.host(), port);
        else
            socket.connectToHost(origin.host(), port);
    }

    void send(const QByteArray &bytes) { socket.write(bytes); }
    bool hasEnded() const { return socket.state() == QAbstractSocket::UnconnectedState; }

    /// The next answer; status 0 if none comes whole.
    Reply receive()
    {
        Reply reply;
        bool isWhole = false;
        waitUntil([&] { return (isWhole = take(reply)) || hasEnded(); });
        return isWhole ? reply : Reply();
    }
    Reply exchange(const QByteArray &bytes)
    {
        send(bytes);
        return receive();
    }
    /// Every byte until the connection ends, which it has to.
    QByteArray receiveAll()
    {
        if (!waitUntil([this] { return hasEnded(); }))
            throw std::runtime_error("the connection does not end");
        return m_received + socket.readAll();
    }

    QSslSocket socket;

private:
    bool take(Reply &reply)
    {
        m_received += socket.readAll();
        const qsizetype end = m_received.indexOf("\r\n\r\n");
        if (end < 0)
            return false;
        reply.head = m_received.left(end + 2);
        reply.status = reply.head.mid(9, 3).toInt();
        const qint64 length = reply.header("Content-Length").toLongLong();
        if (m_received.size() < end + 4 + length)
            return false;
        reply.body = m_received.mid(end + 4, length);
        m_received.remove(0, end + 4 + length);
        return true;
    }

    QByteArray m_received;
};

/// A client on the system's own calls, which tell an orderly end of a connection from a reset.
class SystemClient
{
public:
    SystemClient(const QUrl &origin, const QByteArray &bytes) : m_fd(::socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<quint16>(origin.port()));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::connect(m_fd, reinterpret_cast<const sockaddr *>(&address), sizeof address);
        ::send(m_fd, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    }
    ~SystemClient() { ::close(m_fd); }
    Q_DISABLE_COPY_MOVE(SystemClient)

    /// "open", "ended" or "reset", after reading what is there.
    QByteArray state()
    {
        char buffer[65536];
        ssize_t size = 0;
        while (m_state == "open" && (size = ::recv(m_fd, buffer, sizeof buffer, MSG_DONTWAIT)) > 0)
            received.append(buffer, size);
        // The system tells of a reset once only.
        if (m_state == "open" && size == 0)
            m_state = "ended";
        else if (m_state == "open" && errno == ECONNRESET)
            m_state = "reset";
        return m_state;
    }

    QByteArray received;

private:
    int m_fd;
    QByteArray m_state = "open";
};

/// The answer to these bytes, sent over a connection of their own.
inline Reply ask(const QUrl &origin, const QByteArray &bytes)
{
    return RawClient(origin).exchange(bytes);
}

inline QByteArray request(const QByteArray &method, const QByteArray &target, const QByteArray &body = {},
                          const QByteArray &headers = "Content-Type: application/json\r\n")
{
    return method + ' ' + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n" + headers
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

inline QByteArray post(const QByteArray &path, const QJsonObject &object)
{
    return request("POST", path, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

inline QJsonObject with(QJsonObject object, const QJsonObject &more)
{
    for (auto it = more.begin(); it != more.end(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

/// What every request of the app holds, and \a json.
inline QJsonObject caller(const QByteArray &json = "{}")
{
    const QJsonObject who{{QStringLiteral("token"), TestService::token()},
                          {QStringLiteral("bundle_id"), TestService::bundleId()}};
    return with(who, QJsonDocument::fromJson(json).object());
}

inline QJsonObject goodPing()
{
    return caller(R"({"platform": "ios", "device_id": "AB-12"})");
}

inline QJsonObject goodInit(qint64 bytes)
{
    return with(caller(R"({"kind": "screenshot", "mime_type": "image/png"})"),
                {{QStringLiteral("bytes"), bytes}});
}

inline QJsonObject goodReport()
{
    QByteArray json = R"({"token": "%1", "category": "bug", "occurrence_frequency": "many_times",
        "message": "It <b>breaks</b>", "allow_contact": true, "email": "a@example.com",
        "occurred_at": "2026-11-14T23:35:30Z", "app": {"bundle_id": "%2", "version": "1", "build": "2"},
        "device": {"model": "Desk", "machine": "x86_64", "os_name": "Debian", "os_version": "12",
                   "locale": "en_US", "time_zone": "Europe/Berlin", "screen_width": 1920,
                   "screen_height": 1080.5, "interface_style": "dark"}})";
    json.replace("%1", TestService::token().toUtf8()).replace("%2", TestService::bundleId().toUtf8());
    return QJsonDocument::fromJson(json).object();
}

/// The upload of \a bytes to the place that the answer \a init gives.
inline QByteArray put(const QJsonObject &init, const QByteArray &bytes)
{
    const QByteArray url = init.value(QLatin1String("upload_url")).toString().toLatin1();
    const QJsonObject required = init.value(QLatin1String("required_headers")).toObject();
    QByteArray headers;
    for (auto it = required.begin(); it != required.end(); ++it)
        headers += it.key().toLatin1() + ": " + it->toString().toLatin1() + "\r\n";
    return request("PUT", url.mid(url.indexOf("/storage/")), bytes, headers);
}

} // namespace zenvor::test
