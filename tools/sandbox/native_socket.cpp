#include "sandbox/native_socket.h"

#include <QAbstractSocket>

#include <sys/socket.h>

namespace zenvor::sandbox {

void finishSending(QAbstractSocket &socket)
{
    ::shutdown(static_cast<int>(socket.socketDescriptor()), SHUT_WR);
}

void resetConnection(QAbstractSocket &socket)
{
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket.abort();
}

} // namespace zenvor::sandbox
