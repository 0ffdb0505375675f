#include "sandbox/connection.h"

#include "sandbox/native_socket.h"

#include <QSslSocket>

#include <chrono>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr qint64 readSize = 256 * 1024;
constexpr qsizetype keptStorageBytes = 64 * 1024;
constexpr auto lingerTime = 5s;

} // namespace

Connection::Connection(QTcpSocket *socket, quint64 number, Service &service, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_number(number)
    , m_service(service)
{
    m_socket->setParent(this);
    // The buffer's limit is what holds a fast client back while the disk, or a fault, takes its time.
    m_socket->setReadBufferSize(2 * readSize);
    m_lingering.setSingleShot(true);
    connect(&m_lingering, &QTimer::timeout, this, [this] { m_socket->abort(); });
    connect(m_socket, &QTcpSocket::readyRead, this, &Connection::read);
    connect(m_socket, &QTcpSocket::disconnected, this, &Connection::clientLeft);
}

void Connection::drop()
{
    m_isDropped = true;
    m_isUnread = true;
    m_socket->disconnect(this);
    m_socket->abort();
    deleteLater(); // it may be its own signal that led here
}

void Connection::read()
{
    if (m_isReading)
        return; // the loop below is already at it
    m_isReading = true;
    while (!m_isUnread) {
        if (m_isDiscarding) {
            discardInput();
            break;
        }
        if (m_exchange && m_exchange->hasEnded)
            break; // one answer after the other
        const auto event = m_reader.next();
        if (event != HttpReader::Event::NeedMore) {
            readEvent(event);
            continue;
        }
        const QByteArray bytes = m_socket->read(readSize);
        if (bytes.isEmpty())
            break;
        m_reader.feed(bytes);
    }
    m_isReading = false;
}

void Connection::readEvent(HttpReader::Event event)
{
    switch (event) {
    case HttpReader::Event::Head:
        beginRequest();
        break;
    case HttpReader::Event::Body:
        takeBody(m_reader.takeBody());
        break;
    case HttpReader::Event::End:
        endRequest();
        break;
    case HttpReader::Event::Broken:
        refuseBroken();
        break;
    case HttpReader::Event::NeedMore:
        break;
    }
}

void Connection::discardInput()
{
    while (m_socket->bytesAvailable() > 0)
        m_socket->read(readSize);
}

void Connection::beginRequest()
{
    m_exchange = std::make_unique<Exchange>();
    Exchange &exchange = *m_exchange;
    exchange.head = m_reader.head();
    exchange.record.method = exchange.head.method;
    exchange.record.target = exchange.head.target;
    exchange.record.headers = exchange.head.headers;
    exchange.record.connection = m_number;

    const QByteArray path = exchange.head.path();
    if (auto refused = Service::judgeHost(exchange.head)) {
        exchange.intake.refusal = std::move(refused);
        exchange.intake.bodyLimit = uploadLimit;
    } else {
        if (!Service::isForDeveloper(path))
            exchange.fault = m_service.faults().take(exchange.head.method, QString::fromLatin1(path));
        exchange.intake = m_service.begin(exchange.head);
    }
    m_reader.setBodyLimit(exchange.intake.bodyLimit);

    const bool actsEarly =
        exchange.fault && (exchange.fault->when == Fault::When::Head || exchange.fault->stopReading);
    const bool isTooLong = exchange.head.contentLength > exchange.intake.bodyLimit;
    const bool asksFirst = exchange.head.wantsContinue();
    if (actsEarly || (asksFirst && exchange.intake.refusal && !exchange.fault)) {
        m_mustClose = asksFirst; // whether the body will still come is the client's choice
        decideEarly();
    } else if (asksFirst && !isTooLong) {
        m_socket->write(headBytes(100, {}));
    }
}

void Connection::decideEarly()
{
    Exchange &exchange = *m_exchange;
    m_isUnread = exchange.fault && exchange.fault->stopReading;
    decide(exchange.intake.refusal.value_or(Answer()));
}

void Connection::takeBody(const QByteArray &piece)
{
    Exchange &exchange = *m_exchange;
    exchange.record.bodySize += piece.size();
    if (exchange.isDecided)
        return;
    if (exchange.intake.upload)
        exchange.intake.upload->write(piece);
    const bool isStorage = exchange.intake.bodyLimit == uploadLimit;
    if (isStorage && exchange.record.bodySize > keptStorageBytes)
        exchange.record.body.clear();
    else
        exchange.record.body += piece;
}

void Connection::endRequest()
{
    Exchange &exchange = *m_exchange;
    exchange.hasEnded = true;
    if (exchange.isDecided) {
        if (exchange.isSent)
            nextRequest();
        return;
    }
    const bool isHandled = !exchange.fault || exchange.fault->handlesRequest();
    decide(isHandled ? m_service.finish(exchange.head, exchange.record.body, exchange.intake) : Answer());
}

void Connection::refuseBroken()
{
    m_isDiscarding = true;
    m_mustClose = true;
    if (!m_exchange)
        m_exchange = std::make_unique<Exchange>();
    m_exchange->record.connection = m_number;
    m_exchange->hasEnded = true;
    m_exchange->fault.reset();
    if (!m_exchange->isDecided)
        decide(refusal(m_reader.brokenStatus(), {m_reader.brokenText()}));
    else if (m_exchange->isSent)
        closeAfterAnswer();
}

void Connection::decide(const Answer &answer)
{
    Exchange &exchange = *m_exchange;
    exchange.isDecided = true;
    const auto &fault = exchange.fault;
    const bool isHandled = !fault || fault->handlesRequest();
    SendPlan plan = fault
        ? planFault(exchange.head, *fault, isHandled ? std::optional(answer) : std::nullopt, m_mustClose)
        : planAnswer(exchange.head, answer, m_mustClose);
    if (isHandled) {
        m_service.noteSent(exchange.head, exchange.intake, plan.headers);
        exchange.record.deviations = answer.deviations;
        exchange.record.notes = answer.notes;
    }
    exchange.intake.upload.reset();
    exchange.record.status = plan.status;
    exchange.record.isFault = fault.has_value();
    Q_EMIT decided(exchange.record);
    if (!m_isDropped)
        play(std::move(plan));
}

void Connection::play(SendPlan plan)
{
    auto *sender = new AnswerSender(m_socket, std::move(plan), this);
    connect(sender, &AnswerSender::finished, this, [this, sender](SendPlan::Ending ending) {
        sender->deleteLater();
        ended(ending);
    });
    sender->start();
}

void Connection::ended(SendPlan::Ending ending)
{
    m_exchange->isSent = true;
    switch (ending) {
    case SendPlan::Ending::KeepAlive:
        if (m_mustClose)
            closeAfterAnswer();
        else if (m_exchange->hasEnded)
            nextRequest();
        break;
    case SendPlan::Ending::Close:
        closeAfterAnswer();
        break;
    case SendPlan::Ending::Cut:
        m_isDiscarding = !m_isUnread;
        finishSending(*m_socket);
        m_lingering.start(lingerTime);
        read();
        break;
    case SendPlan::Ending::Reset:
        m_isUnread = true;
        resetConnection(*m_socket);
        break;
    case SendPlan::Ending::Stall:
        break;
    }
}

void Connection::nextRequest()
{
    m_exchange.reset();
    // Queued, so that a client that sends many requests at once cannot keep the event loop.
    QMetaObject::invokeMethod(this, &Connection::read, Qt::QueuedConnection);
}

// Closing while the client still sends would make the system answer with an RST, and the client might lose
// the answer to it; so the rest is read, but not for ever.
void Connection::closeAfterAnswer()
{
    m_isDiscarding = true;
    m_isUnread = false;
    const auto *tls = qobject_cast<QSslSocket *>(m_socket);
    if (tls != nullptr && tls->isEncrypted())
        m_socket->disconnectFromHost();
    else
        finishSending(*m_socket);
    m_lingering.start(lingerTime);
    read();
}

void Connection::clientLeft()
{
    if (m_exchange && !m_exchange->isDecided) {
        m_exchange->isDecided = true;
        m_exchange->record.deviations << u"the client left before its request was complete"_s;
        Q_EMIT decided(m_exchange->record);
    }
    deleteLater();
}

} // namespace zenvor::sandbox
