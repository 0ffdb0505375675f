#include "sandbox/sandbox.h"

#include "sandbox/connection.h"
#include "sandbox/service.h"

#include <QFile>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

std::optional<QHostAddress> loopbackAddress(const QString &host)
{
    if (host == "localhost"_L1)
        return QHostAddress(QHostAddress::LocalHost);
    const QHostAddress address(host);
    return address.isLoopback() ? std::optional(address) : std::nullopt;
}

std::optional<QSslKey> readKey(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray pem = file.readAll();
    for (const auto algorithm : {QSsl::Rsa, QSsl::Ec}) {
        const QSslKey key(pem, algorithm);
        if (!key.isNull())
            return key;
    }
    return {};
}

} // namespace

/// Hands each new connection to the sandbox as a socket, encrypted where there is a certificate.
class Sandbox::Server : public QTcpServer
{
public:
    Server(Sandbox *sandbox, Service &service) : m_sandbox(sandbox), m_service(service) {}

    std::optional<QSslConfiguration> tls;

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = tls ? new QSslSocket : new QTcpSocket;
        if (!socket->setSocketDescriptor(descriptor)) {
            delete socket;
            return;
        }
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        if (auto *encrypted = qobject_cast<QSslSocket *>(socket)) {
            connect(encrypted, &QSslSocket::errorOccurred, m_sandbox, [this, encrypted] {
                if (!encrypted->isEncrypted())
                    Q_EMIT m_sandbox->logged(u"TLS handshake failed: "_s + encrypted->errorString());
            });
            encrypted->setSslConfiguration(*tls);
            encrypted->startServerEncryption();
        }
        auto *connection = new Connection(socket, ++m_connections, m_service, this);
        connect(connection, &Connection::decided, m_sandbox, &Sandbox::handleDecided);
    }

private:
    Sandbox *m_sandbox;
    Service &m_service;
    quint64 m_connections = 0;
};

Sandbox::Sandbox(SandboxOptions options, QObject *parent)
    : QObject(parent)
    , m_options(std::move(options))
    , m_service(std::make_unique<Service>(m_options.bundleIdsByToken))
    , m_server(std::make_unique<Server>(this, *m_service))
    , m_port(m_options.port)
{
    connect(m_service.get(), &Service::reportReceived, this, &Sandbox::reportReceived);
}

Sandbox::~Sandbox()
{
    close();
}

bool Sandbox::listen(QString *error)
{
    const auto address = loopbackAddress(m_options.requestHost);
    if (!address) {
        *error = u"%1 is not an address of this machine alone: 127.0.0.1, ::1 or localhost"_s.arg(
            m_options.requestHost);
        return false;
    }
    if (!openTls(error))
        return false;
    QStringList notes;
    if (!m_service->open(m_options.folder, error, &notes))
        return false;
    if (!m_server->listen(*address, m_port)) {
        *error = u"Cannot listen on port %1: %2"_s.arg(m_port).arg(m_server->errorString());
        return false;
    }
    m_port = m_server->serverPort();
    m_service->setOrigin(url());
    for (const QString &note : notes)
        Q_EMIT logged(note);
    return true;
}

bool Sandbox::openTls(QString *error)
{
    if (m_options.certificateFile.isEmpty() && m_options.keyFile.isEmpty())
        return true;
    const auto chain = QSslCertificate::fromPath(m_options.certificateFile);
    const auto key = readKey(m_options.keyFile);
    if (chain.isEmpty())
        *error = u"There is no readable certificate in '%1'."_s.arg(m_options.certificateFile);
    else if (!key)
        *error = u"There is no readable RSA or EC key in '%1'."_s.arg(m_options.keyFile);
    else if (!QSslSocket::supportsSsl())
        *error = u"This Qt cannot speak TLS."_s;
    else {
        QSslConfiguration tls;
        tls.setLocalCertificateChain(chain);
        tls.setPrivateKey(*key);
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        m_server->tls = tls;
        return true;
    }
    return false;
}

void Sandbox::close()
{
    m_server->close();
    const auto connections = m_server->findChildren<Connection *>(Qt::FindDirectChildrenOnly);
    for (Connection *connection : connections)
        connection->drop();
}

QUrl Sandbox::url() const
{
    if (m_port == 0)
        return {};
    QUrl url;
    url.setScheme(m_server->tls ? u"https"_s : u"http"_s);
    url.setHost(m_options.requestHost);
    url.setPort(m_port);
    return url;
}

void Sandbox::addFault(const Fault &fault)
{
    m_service->faults().add(fault);
}

bool Sandbox::addFault(const QByteArray &json, QString *error)
{
    const auto faults = parseFaults(json, error);
    for (const Fault &fault : faults.value_or(QList<Fault>()))
        addFault(fault);
    return faults.has_value();
}

void Sandbox::clearFaults()
{
    m_service->faults().clear();
}

QList<RecordedRequest> Sandbox::requests() const
{
    return m_service->requests().all();
}

void Sandbox::clearRequests()
{
    m_service->requests().clear();
}

ReportStore &Sandbox::reports()
{
    return m_service->reports();
}

const ReportStore &Sandbox::reports() const
{
    return m_service->reports();
}

void Sandbox::handleDecided(const RecordedRequest &request)
{
    const bool isForDeveloper = Service::isForDeveloper(request.path());
    // An open inbox asks for much; among its lines, those of the app would be lost.
    const bool onlyLooks =
        isForDeveloper && request.status < 400 && (request.method == "GET"_ba || request.method == "HEAD"_ba);
    if (!onlyLooks)
        Q_EMIT logged(logLine(request));
    if (isForDeveloper)
        return;
    m_service->requests().add(request);
    Q_EMIT requestAnswered(request);
}

} // namespace zenvor::sandbox
