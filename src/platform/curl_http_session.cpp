#include "platform/curl_http_session.h"

#include "platform/clock.h"
#include "platform/curl_transfer.h"
#include "platform/openssl_exit.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <optional>
#include <system_error>
#include <utility>

#ifdef Q_OS_UNIX
#include <csignal>
#include <dlfcn.h>
#endif

namespace zenvor {
namespace {

// With nothing under way there is nothing to wake up for; the poll just takes no "for ever".
constexpr std::chrono::hours idleWait{24};

// The host's signal handlers run on the host's threads, and a connection that the server has closed
// must not end the process.
void blockSignals()
{
#ifdef Q_OS_UNIX
    sigset_t signalSet;
    sigfillset(&signalSet);
    for (const int own : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT, SIGSYS})
        sigdelset(&signalSet, own);
    pthread_sigmask(SIG_BLOCK, &signalSet, nullptr);
#endif
}

// What libcurl may be built on.
QFunctionPointer openSslInitialize()
{
#ifdef Q_OS_UNIX
    return reinterpret_cast<QFunctionPointer>(dlsym(RTLD_DEFAULT, "OPENSSL_init_crypto"));
#else
    return nullptr;
#endif
}

QByteArray systemCaFile()
{
    if (const auto named = qgetenv("SSL_CERT_FILE"); !named.isEmpty())
        return named;
    const auto *info = curl_version_info(CURLVERSION_NOW);
    return info->age >= CURLVERSION_TENTH && info->cainfo ? QByteArray(info->cainfo) : QByteArray();
}

} // namespace

struct CurlHttpSession::Job
{
    Job(HttpRequest request, const Clock &clock, StopToken stopToken, Done callback)
        : transfer(std::move(request), clock)
        , stop(std::move(stopToken))
        , done(std::move(callback))
    {
    }

    CurlTransfer transfer;
    StopToken stop;
    Done done;
    std::atomic<bool> isStopped = false;
    std::optional<StopCallback> stopCallback;
};

// The session's thread: the transfers under way and libcurl's handle for all of them.
class CurlHttpSession::Loop
{
public:
    Loop(CurlHttpSession &session, CURLM *multi) : m_session(session), m_multi(multi) {}

    ~Loop()
    {
        for (const auto &[handle, job] : m_running) {
            job->stopCallback.reset();
            curl_multi_remove_handle(m_multi, handle);
        }
    }

    void begin(const std::shared_ptr<Job> &job)
    {
        if (job->stop.stopRequested()) {
            job->done(UrlErrorCode::Cancelled);
            return;
        }
        CURL *const handle = job->transfer.open(m_session.m_caFile);
        m_running.emplace(handle, job);
        curl_multi_add_handle(m_multi, handle);
        job->stopCallback.emplace(job->stop, [session = &m_session, weak = std::weak_ptr(job)] {
            if (const auto stopped = weak.lock()) {
                stopped->isStopped = true;
                session->wake();
            }
        });
    }

    void perform()
    {
        int count = 0;
        curl_multi_perform(m_multi, &count);
        while (const auto *message = curl_multi_info_read(m_multi, &count)) {
            if (message->msg != CURLMSG_DONE)
                continue;
            const auto job = m_running.at(message->easy_handle);
            finish(job, job->transfer.result(message->data.result));
        }
    }

    /// Ends what was stopped or has stood still for too long; the time to the next such moment.
    std::chrono::milliseconds expire()
    {
        const auto now = m_session.m_clock.now();
        std::chrono::milliseconds wait = idleWait;
        std::vector<std::shared_ptr<Job>> stopped;
        std::vector<std::shared_ptr<Job>> overdue;
        for (const auto &[handle, job] : m_running) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(job->transfer.deadline() - now);
            if (job->isStopped)
                stopped.push_back(job);
            else if (left.count() <= 0)
                overdue.push_back(job);
            else
                wait = std::min(wait, m_session.m_clock.realDuration(left));
        }
        for (const auto &job : stopped)
            finish(job, UrlErrorCode::Cancelled);
        for (const auto &job : overdue)
            finish(job, UrlErrorCode::TimedOut);
        return wait;
    }

private:
    void finish(const std::shared_ptr<Job> &job, Result result)
    {
        curl_multi_remove_handle(m_multi, job->transfer.handle());
        m_running.erase(job->transfer.handle());
        job->stopCallback.reset();
        job->done(std::move(result));
    }

    CurlHttpSession &m_session;
    CURLM *const m_multi;
    std::unordered_map<CURL *, std::shared_ptr<Job>> m_running;
};

CurlHttpSession::CurlHttpSession(const Clock &clock, QString caFile)
    : m_clock(clock)
    , m_caFile(caFile.isEmpty() ? systemCaFile() : QFile::encodeName(caFile))
{
}

CurlHttpSession::~CurlHttpSession()
{
    end();
}

void CurlHttpSession::start(HttpRequest request, StopToken stop, Done done)
{
    auto job = std::make_shared<Job>(std::move(request), m_clock, std::move(stop), std::move(done));
    std::unique_lock lock(m_mutex);
    if (m_hasEnded)
        return;
    if (!startThread()) {
        lock.unlock();
        job->done(UrlErrorCode::Unknown);
        return;
    }
    m_incoming.push_back(std::move(job));
    if (m_multi)
        curl_multi_wakeup(m_multi);
}

bool CurlHttpSession::startThread()
{
    if (m_thread.joinable())
        return true;
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error &) { // the system has no more threads to give
        return false;
    }
    return true;
}

void CurlHttpSession::wake()
{
    const std::lock_guard lock(m_mutex);
    if (m_multi)
        curl_multi_wakeup(m_multi);
}

void CurlHttpSession::end()
{
    std::thread thread;
    {
        const std::lock_guard lock(m_mutex);
        m_hasEnded = true;
        m_incoming.clear();
        if (m_multi)
            curl_multi_wakeup(m_multi);
        thread = std::move(m_thread); // two ends at once must not both join
    }
    if (thread.joinable())
        thread.join();
}

void CurlHttpSession::run()
{
    blockSignals();
    keepOpenSslToTheEnd(openSslInitialize());
    // On this thread: OpenSSL leaves state of the thread that first uses it, and pool threads come and go.
    curl_global_init(CURL_GLOBAL_DEFAULT);
    endWithProcess();
    CURLM *const multi = curl_multi_init();
    {
        const std::lock_guard lock(m_mutex);
        m_multi = multi;
    }
    {
        Loop loop(*this, multi);
        for (;;) {
            std::vector<std::shared_ptr<Job>> incoming;
            {
                const std::lock_guard lock(m_mutex);
                if (m_hasEnded)
                    break;
                incoming.swap(m_incoming);
            }
            for (const auto &job : incoming)
                loop.begin(job);
            loop.perform();
            const auto wait = loop.expire();
            curl_multi_poll(multi, nullptr, 0, int(wait.count()), nullptr);
        }
    }
    {
        const std::lock_guard lock(m_mutex);
        m_multi = nullptr;
    }
    curl_multi_cleanup(multi);
}

} // namespace zenvor
