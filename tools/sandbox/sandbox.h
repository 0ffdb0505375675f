#pragma once

#include "sandbox/fault.h"
#include "sandbox/recorded_request.h"
#include "sandbox/report_store.h"

#include <QHash>
#include <QObject>
#include <QUrl>

#include <memory>

namespace zenvor::sandbox {

class Service;

struct SandboxOptions
{
    /// Which app each token was issued for. Another token is answered 401; for another app, validation
    /// answers "match": false and everything else 403.
    QHash<QString, QString> bundleIdsByToken;
    QString folder; ///< where reports and uploads are kept; created
    QString requestHost = QStringLiteral("127.0.0.1"); ///< 127.0.0.1, ::1 or localhost; others are refused
    quint16 port = 0; ///< 0: any free one
    QString certificateFile; ///< PEM; with a key, the service speaks https only
    QString keyFile; ///< PEM, RSA or EC, without a passphrase
};

/// A report service for one machine: the endpoints and the storage, strict about the protocol, and able to
/// misbehave on demand. Everything happens in the thread of this object, asynchronously; it must have an
/// event loop. A slot of its signals may close it, but not delete it.
class Sandbox : public QObject
{
    Q_OBJECT

public:
    explicit Sandbox(SandboxOptions options, QObject *parent = nullptr);
    ~Sandbox() override;

    /// False if the port, the folder or the certificate cannot be used; \a error is for a person. After
    /// close(), listens on the same port again, with the reports that the folder holds.
    bool listen(QString *error);
    /// Stops listening and drops the connections. Faults and recorded requests stay.
    void close();
    /// The origin, such as http://127.0.0.1:41234; empty before the first listen().
    QUrl url() const;

    void addFault(const Fault &fault);
    /// From the JSON form. False if it is no fault.
    bool addFault(const QByteArray &json, QString *error);
    void clearFaults();

    /// The requests to the service, in the order in which they were decided on; the developer's own (inbox,
    /// control calls) are not among them. The oldest are dropped after 2000 requests or 64 MB.
    QList<RecordedRequest> requests() const;
    void clearRequests();

    ReportStore &reports();
    const ReportStore &reports() const;

Q_SIGNALS:
    /// The answer is decided on and about to be sent.
    void requestAnswered(RecordedRequest request);
    void reportReceived(QString id);
    /// A line for a person, without a token in it.
    void logged(QString line);

private:
    class Server;
    bool openTls(QString *error);
    void handleDecided(const RecordedRequest &request);

    SandboxOptions m_options;
    std::unique_ptr<Service> m_service;
    std::unique_ptr<Server> m_server; // its connections use the service
    quint16 m_port;
};

} // namespace zenvor::sandbox
