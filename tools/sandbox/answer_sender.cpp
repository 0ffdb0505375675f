#include "sandbox/answer_sender.h"

#include <QPointer>
#include <QSslSocket>

#include <algorithm>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 highWater = 256 * 1024;
constexpr qsizetype pieceSize = 64 * 1024;
constexpr int piecesAtOnce = 4;

} // namespace

AnswerSender::AnswerSender(QTcpSocket *socket, SendPlan plan, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_plan(std::move(plan))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &AnswerSender::pump);
    const auto *tls = qobject_cast<QSslSocket *>(m_socket);
    // An encrypted socket tells of plain bytes while their ciphertext is between its buffers and counted in
    // neither, so the look at what is unsent has to wait until it is done.
    const auto type = tls != nullptr ? Qt::QueuedConnection : Qt::DirectConnection;
    connect(m_socket, &QTcpSocket::bytesWritten, this, &AnswerSender::pump, type);
    if (tls != nullptr)
        connect(tls, &QSslSocket::encryptedBytesWritten, this, &AnswerSender::pump, type);
}

void AnswerSender::start()
{
    m_stage = Stage::Waiting;
    if (m_plan.body) {
        m_plan.body->onResume([self = QPointer(this)] {
            if (self)
                self->pump();
        });
    }
    m_socket->write(m_plan.informational);
    if (m_plan.delayMs > 0)
        m_timer.start(m_plan.delayMs);
    else
        pump();
}

qint64 AnswerSender::unsent() const
{
    const auto *tls = qobject_cast<QSslSocket *>(m_socket);
    return m_socket->bytesToWrite() + (tls != nullptr ? tls->encryptedBytesToWrite() : 0);
}

void AnswerSender::pump()
{
    // An active timer is a delay or a drip that is not over yet.
    if (m_stage == Stage::Idle || m_stage == Stage::Done || m_timer.isActive())
        return;
    for (int pieces = 0; m_stage != Stage::Flushing && unsent() < highWater; ++pieces) {
        if (pieces == piecesAtOnce) {
            m_timer.start(0); // the other connections have their turn
            return;
        }
        if (m_offset == m_pending.size() && !refill()) {
            if (m_plan.body && m_plan.body->isPaused())
                return;
            m_stage = Stage::Flushing;
            break;
        }
        if (m_isDripping) {
            m_socket->write(m_pending.constData() + m_offset, 1);
            ++m_offset;
            m_timer.start(m_plan.dripMs);
            return;
        }
        m_socket->write(m_pending);
        m_offset = m_pending.size();
    }
    if (m_stage == Stage::Flushing && unsent() == 0) {
        m_stage = Stage::Done;
        Q_EMIT finished(m_plan.ending);
    }
}

bool AnswerSender::refill()
{
    m_offset = 0;
    m_pending.clear();
    if (m_stage == Stage::Waiting) {
        m_stage = Stage::Head;
        m_isDripping = m_plan.dripsHead && m_plan.dripMs > 0;
        m_pending = m_plan.head;
        if (!m_pending.isEmpty())
            return true;
    }
    if (m_stage == Stage::Head) {
        m_stage = Stage::Body;
        m_isDripping = m_plan.dripMs > 0;
    }
    m_pending = nextBodyPiece();
    return !m_pending.isEmpty();
}

QByteArray AnswerSender::nextBodyPiece()
{
    if (!m_plan.body)
        return {};
    const qint64 left = m_plan.bodyLimit < 0 ? pieceSize : m_plan.bodyLimit - m_bodySent;
    if (left <= 0)
        return {};
    const QByteArray piece = m_plan.body->read(std::min<qint64>(pieceSize, left));
    m_bodySent += piece.size();
    if (!m_plan.isChunked)
        return piece;
    if (piece.isEmpty()) {
        m_plan.body.reset();
        return "0\r\n\r\n"_ba;
    }
    QByteArray chunk = QByteArray::number(piece.size(), 16) + "\r\n"_ba + piece + "\r\n"_ba;
    if (m_plan.hasBadChunk) {
        m_plan.body.reset();
        chunk += "no size\r\n"_ba;
    }
    return chunk;
}

} // namespace zenvor::sandbox
