#pragma once

#include "faults/outcome.h"
#include "platform/http_session.h"

#include <mutex>

namespace zenvor::test {

/// The session under test behind a network in which some requests end up elsewhere: the first so many
/// of one kind are sent to another origin. Counts what the client asks for, in every case; the second of
/// two attachments is known by its kind, a video.
class DetourSession final : public HttpSession
{
public:
    /// \a session must outlive this one.
    explicit DetourSession(HttpSession &session) : m_session(session) {}

    /// From now on; \a count requests of the kind \a kind. An empty \a origin diverts nothing.
    void divert(RequestKind kind, const QUrl &origin, int count);
    RequestCounts made() const;
    RequestCounts madeForSecond() const;

    void start(HttpRequest request, StopToken stop, Done done) override;
    void end() override { m_session.end(); }

private:
    HttpSession &m_session;
    mutable std::mutex m_mutex; // the ping queue works on an executor of its own
    RequestCounts m_made;
    RequestCounts m_madeForSecond;
    bool m_isSecond = false; // of the attachments
    RequestKind m_kind = RequestKind::Validate;
    QUrl m_origin;
    int m_left = 0;
};

} // namespace zenvor::test
