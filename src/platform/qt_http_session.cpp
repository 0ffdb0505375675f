#include "platform/qt_http_session.h"

#include "platform/qt_network.h"
#include "platform/qt_transfer.h"

#include <QFile>
#include <QSslSocket>
#include <QThread>

#include <utility>

namespace zenvor {

// What lives on the session's thread. The transfers, its children, go after the network that they are
// done with by then.
class QtHttpSession::Worker final : public QObject
{
public:
    Worker(const Clock &clock, QString caFile) : m_network(clock, std::move(caFile)) {}

    void begin(HttpRequest request, StopToken stop, Done done)
    {
        auto *transfer =
            new QtTransfer(m_network, std::move(request), std::move(stop), std::move(done), this);
        transfer->begin();
    }

private:
    QtNetwork m_network;
};

QtHttpSession::QtHttpSession(const Clock &clock, QString caFile)
    : m_clock(clock)
    , m_caFile(caFile.isEmpty() ? QFile::decodeName(qgetenv("SSL_CERT_FILE")) : std::move(caFile))
{
}

QtHttpSession::~QtHttpSession()
{
    end();
}

void QtHttpSession::start(HttpRequest request, StopToken stop, Done done)
{
    std::unique_lock lock(m_mutex);
    if (m_hasEnded)
        return;
    if (!startThread()) {
        lock.unlock();
        done(UrlErrorCode::Unknown);
        return;
    }
    QMetaObject::invokeMethod(
        m_worker,
        [worker = m_worker, request = std::move(request), stop = std::move(stop), done = std::move(done)] {
            worker->begin(request, stop, done);
        },
        Qt::QueuedConnection);
}

bool QtHttpSession::startThread()
{
    if (m_thread)
        return true;
    auto thread = std::make_unique<QThread>();
    thread->setObjectName(QStringLiteral("zenvor-http"));
    thread->start();
    if (!thread->isRunning()) // the system has no more threads to give
        return false;
    m_worker = new Worker(m_clock, m_caFile);
    m_worker->moveToThread(thread.get());
    QObject::connect(thread.get(), &QThread::finished, m_worker, &QObject::deleteLater);
    QMetaObject::invokeMethod(
        m_worker,
        [this] {
            QSslSocket::supportsSsl(); // loads what TLS is built on
            endWithProcess();
        },
        Qt::QueuedConnection);
    m_thread = std::move(thread);
    return true;
}

void QtHttpSession::end()
{
    std::unique_ptr<QThread> thread;
    {
        const std::lock_guard lock(m_mutex);
        m_hasEnded = true;
        thread = std::move(m_thread); // two ends at once must not both destroy it
    }
    if (!thread)
        return;
    thread->quit();
    thread->wait();
}

} // namespace zenvor
