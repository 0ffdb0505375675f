#pragma once

class QAbstractSocket;

namespace zenvor::sandbox {

// The two things that Qt's sockets do not offer, on the file descriptor below them.

/// Sends the end of the stream (FIN) and leaves the receiving direction open. Everything written must have
/// left Qt's buffers.
void finishSending(QAbstractSocket &socket);

/// Ends the connection with an RST. What was sent may be lost on its way.
void resetConnection(QAbstractSocket &socket);

} // namespace zenvor::sandbox
