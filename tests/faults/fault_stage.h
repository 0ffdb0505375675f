#pragma once

#include "client/report_client.h"
#include "faults/closed_port.h"
#include "faults/detour_session.h"
#include "faults/fault_pair.h"
#include "faults/outcome.h"
#include "support/certificate.h"
#include "support/fast_clock.h"
#include "support/test_service.h"

#include <memory>

namespace zenvor::test {

/// What a pair came to.
struct Observation
{
    Outcome outcome;
    Usage usage;
};

/// The services, the clock and the store in which pairs are played, one after the other. Only one of
/// them in a process: the client asks the same service for good.
class FaultStage
{
public:
    FaultStage();

    /// Plays the fault of \a pair on a session of its own, which has had one request answered before.
    Observation play(const FaultPair &pair);

private:
    void arrange(const FaultPair &pair, DetourSession &session);
    QString call(const FaultPair &pair, const ReportClient &client);
    QString validate(const ReportClient &client);
    QString submit(const ReportClient &client, qsizetype attachmentSize);
    QString flush(const ReportClient &client);

    std::unique_ptr<HttpSession> makeSession(SessionKind kind) const;
    QUrl originOf(Detour detour) const;
    QList<sandbox::RecordedRequest> arrivedRequests() const;
    void countArrivals(Outcome &outcome) const;
    QString keptIn(const FaultPair &pair) const;
    QString queueAfterwards() const;

    const FastClock m_clock{60};
    const Certificate m_trusted;
    const Certificate m_unknown;
    const ClosedPort m_closed;
    TestService m_service;
    TestService m_secure{m_trusted.certificateFile(), m_trusted.keyFile()};
    TestService m_untrusted{m_unknown.certificateFile(), m_unknown.keyFile()};
    const QTemporaryDir m_folder;
    qint64 m_flushBegan = 0; // on the calendar of the injected clock, in milliseconds
    qint64 m_flushEnded = 0;
};

} // namespace zenvor::test
