#pragma once

#include "sandbox/send_plan.h"

#include <QObject>
#include <QTimer>

class QTcpSocket;

namespace zenvor::sandbox {

/// Plays one plan on a socket, in the time that the plan and the client's reading take. At no time is more
/// than a fixed amount waiting in the socket's buffer. The socket must outlive the sender.
class AnswerSender : public QObject
{
    Q_OBJECT

public:
    AnswerSender(QTcpSocket *socket, SendPlan plan, QObject *parent = nullptr);

    void start();

Q_SIGNALS:
    /// All bytes of the plan have left the process; what \a ending asks for is the receiver's to do.
    void finished(SendPlan::Ending ending);

private:
    enum class Stage { Idle, Waiting, Head, Body, Flushing, Done };

    void pump();
    /// Puts the next piece into m_pending; false at the end of the plan.
    bool refill();
    QByteArray nextBodyPiece();
    qint64 unsent() const;

    QTcpSocket *m_socket;
    SendPlan m_plan;
    QTimer m_timer;
    Stage m_stage = Stage::Idle;
    QByteArray m_pending;
    qsizetype m_offset = 0;
    qint64 m_bodySent = 0;
    bool m_isDripping = false;
};

} // namespace zenvor::sandbox
