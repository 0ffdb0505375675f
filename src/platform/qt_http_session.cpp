#include "platform/qt_http_session.h"

#include "platform/openssl_exit.h"
#include "platform/qt_network.h"
#include "platform/qt_transfer.h"

#include <QEventLoop>
#include <QFile>
#include <QLibrary>
#include <QSslSocket>

#include <system_error>
#include <utility>

namespace zenvor {

using namespace Qt::StringLiterals;

struct QtHttpSession::Job
{
    HttpRequest request;
    StopToken stop;
    Done done;
};

// What lives on the session's thread. The transfers, its children, go after the network that they are
// done with by then.
class QtHttpSession::Worker final : public QObject
{
public:
    explicit Worker(QtHttpSession &session) : m_session(session), m_network(session.m_clock, session.m_caFile)
    {
    }

    void run() { m_loop.exec(); }

    void takeIncoming()
    {
        std::vector<Job> incoming;
        {
            const std::lock_guard lock(m_session.m_mutex);
            if (m_session.m_hasEnded)
                return m_loop.quit();
            incoming.swap(m_session.m_incoming);
        }
        for (auto &job : incoming) {
            auto *transfer = new QtTransfer(m_network, std::move(job.request), std::move(job.stop),
                                            std::move(job.done), this);
            transfer->begin();
        }
    }

private:
    QtHttpSession &m_session;
    QtNetwork m_network;
    QEventLoop m_loop;
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
    m_incoming.push_back({std::move(request), std::move(stop), std::move(done)});
    wake();
}

bool QtHttpSession::startThread()
{
    if (m_thread.joinable())
        return true;
    // Not a QThread: its wait() returns a little before the thread is gone, which then still frees what
    // OpenSSL keeps per thread, while the end of the process frees it too.
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error &) { // the system has no more threads to give
        return false;
    }
    return true;
}

void QtHttpSession::wake()
{
    if (m_worker)
        QMetaObject::invokeMethod(
            m_worker, [worker = m_worker] { worker->takeIncoming(); }, Qt::QueuedConnection);
}

void QtHttpSession::end()
{
    std::thread thread;
    {
        const std::lock_guard lock(m_mutex);
        m_hasEnded = true;
        m_incoming.clear();
        wake();
        thread = std::move(m_thread); // two ends at once must not both join
    }
    if (thread.joinable())
        thread.join();
}

void QtHttpSession::run()
{
    // Qt's own threads free what OpenSSL keeps for each of them a moment after Qt has waited for them.
    keepOpenSslToTheEnd(QLibrary::resolve(u"crypto"_s, 3, "OPENSSL_init_crypto"));
    QSslSocket::supportsSsl(); // loads what TLS is built on
    endWithProcess();
    Worker worker(*this);
    {
        const std::lock_guard lock(m_mutex);
        m_worker = &worker;
        wake();
    }
    worker.run();
    const std::lock_guard lock(m_mutex);
    m_worker = nullptr;
}

} // namespace zenvor
