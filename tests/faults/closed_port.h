#pragma once

#include <QUrl>

#include <stdexcept>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zenvor::test {

/// A port of this machine on which nobody listens, and which nobody else can come to listen on
/// meanwhile: it is taken, but never opened.
class ClosedPort
{
public:
    ClosedPort() : m_socket(::socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto *generic = reinterpret_cast<sockaddr *>(&address);
        if (::bind(m_socket, generic, size) != 0 || ::getsockname(m_socket, generic, &size) != 0)
            throw std::runtime_error("there is no free port");
        m_port = ntohs(address.sin_port);
    }
    ~ClosedPort() { ::close(m_socket); }
    Q_DISABLE_COPY_MOVE(ClosedPort)

    QUrl url() const { return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_port)); }

private:
    int m_socket;
    int m_port = 0;
};

} // namespace zenvor::test
