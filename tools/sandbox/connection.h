#pragma once

#include "sandbox/answer_sender.h"
#include "sandbox/service.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QTcpSocket;

namespace zenvor::sandbox {

/// One client's connection: reads its requests one after the other, lets the service or a fault answer
/// them. Owns the socket and deletes itself when the connection has ended.
class Connection : public QObject
{
    Q_OBJECT

public:
    Connection(QTcpSocket *socket, quint64 number, Service &service, QObject *parent);

    /// Ends the connection now, without a word.
    void drop();

Q_SIGNALS:
    /// A request has been decided on; its answer is about to go out.
    void decided(RecordedRequest request);

private:
    /// The request in hand, from its head to the end of its answer.
    struct Exchange
    {
        RequestHead head;
        RecordedRequest record;
        Service::Intake intake;
        std::optional<Fault> fault;
        bool hasEnded = false; // the whole body has been read
        bool isDecided = false;
        bool isSent = false;
    };

    void read();
    void readEvent(HttpReader::Event event);
    void discardInput();
    void beginRequest();
    void takeBody(const QByteArray &piece);
    void endRequest();
    void refuseBroken();
    void decideEarly();
    void decide(const Answer &answer);
    void play(SendPlan plan);
    void ended(SendPlan::Ending ending);
    void nextRequest();
    void closeAfterAnswer();
    void clientLeft();

    QTcpSocket *m_socket;
    quint64 m_number;
    Service &m_service;
    HttpReader m_reader;
    std::unique_ptr<Exchange> m_exchange;
    QTimer m_lingering;
    bool m_isReading = false;
    bool m_isUnread = false; // nothing more is read, on purpose
    bool m_isDiscarding = false; // what still comes in has no meaning
    bool m_mustClose = false;
    bool m_isDropped = false;
};

} // namespace zenvor::sandbox
