#pragma once

#include "platform/http_session.h"

#include <QString>

#include <mutex>
#include <thread>
#include <vector>

namespace zenvor {

class Clock;

/// The session of phones, where Qt Network is at hand and libcurl is not: on one thread of its own,
/// started by the first request and asleep while nothing is under way. It keeps the contract, except
/// where Qt Network 6.4 offers no way to:
/// - a URL is sent as QUrl writes it, not letter by letter as it was received;
/// - an interim answer other than 100, and a head without any field, count as a lost connection;
/// - a request is also repeated if its pooled connection was lost in the head of an answer;
/// - a body counts as whole where its compressed bytes end early, and may where a chunk is malformed, or
///   more of it is waited for;
/// - the bytes of a head, and of the body of a 401 or 407, are no activity: what takes longer than the
///   time-out is timed out, and the body of a 401 or 407 is gathered whole until then;
/// - a name that is being looked up at the end of the application delays that end;
/// - a process may crash that calls exit() on another thread than the main one while the first request is
///   starting: what Qt loads for it then is torn down under it.
class QtHttpSession final : public HttpSession
{
public:
    /// \a clock times the transfers and must outlive the session. \a caFile: trusted certificates in
    /// PEM form; empty: the file named by SSL_CERT_FILE, else the system's.
    explicit QtHttpSession(const Clock &clock, QString caFile = {});
    ~QtHttpSession() override;

    void end() override;
    void start(HttpRequest request, StopToken stop, Done done) override;

private:
    struct Job;
    class Worker;

    /// With the mutex held. False if there is no thread to be had.
    bool startThread();
    void run();
    /// With the mutex held: has the worker look at what is new, if there is a worker yet.
    void wake();

    const Clock &m_clock;
    const QString m_caFile;

    std::mutex m_mutex;
    std::vector<Job> m_incoming;
    std::thread m_thread;
    Worker *m_worker = nullptr; // while its thread takes events
    bool m_hasEnded = false;
};

} // namespace zenvor
