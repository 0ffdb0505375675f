#pragma once

#include "platform/http_session.h"

#include <QString>

#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

typedef void CURLM;

namespace zenvor {

class Clock;
class CurlTransfer;

/// The session of desktop systems: libcurl on one thread of its own, started by the first request and
/// asleep while nothing is under way. The process may end at any moment and in any way. (Where libcurl is
/// built on something else than OpenSSL, exit() while that is being started is as safe as that library makes
/// it.)
class CurlHttpSession final : public HttpSession
{
public:
    /// \a clock times the transfers and must outlive the session. \a caFile: trusted certificates in
    /// PEM form; empty: the file named by SSL_CERT_FILE, else the system's.
    explicit CurlHttpSession(const Clock &clock, QString caFile = {});
    ~CurlHttpSession() override;

    void end() override;
    void start(HttpRequest request, StopToken stop, Done done) override;

private:
    struct Job;
    class Loop;

    /// With the mutex held. False if there is no thread to be had.
    bool startThread();
    void run();
    void wake();

    const Clock &m_clock;
    const QByteArray m_caFile;

    std::mutex m_mutex;
    std::vector<std::shared_ptr<Job>> m_incoming;
    std::thread m_thread;
    CURLM *m_multi = nullptr;
    bool m_hasEnded = false;
};

} // namespace zenvor
