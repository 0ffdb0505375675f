#include "faults/detour_session.h"

namespace zenvor::test {

void DetourSession::divert(RequestKind kind, const QUrl &origin, int count)
{
    const std::lock_guard lock(m_mutex);
    m_kind = kind;
    m_origin = origin;
    m_left = count;
    m_made = {};
    m_madeForSecond = {};
    m_isSecond = false;
}

RequestCounts DetourSession::made() const
{
    const std::lock_guard lock(m_mutex);
    return m_made;
}

RequestCounts DetourSession::madeForSecond() const
{
    const std::lock_guard lock(m_mutex);
    return m_madeForSecond;
}

void DetourSession::start(HttpRequest request, StopToken stop, Done done)
{
    {
        const std::lock_guard lock(m_mutex);
        const auto kind = requestKindOf(request.url.path());
        if (kind == RequestKind::Init)
            m_isSecond = request.body.contains("\"video\"");
        if (kind)
            ++(m_isSecond && isUpload(*kind) ? m_madeForSecond : m_made)[*kind];
        if (kind == m_kind && m_left > 0 && !m_origin.isEmpty()) {
            --m_left;
            request.url.setScheme(m_origin.scheme());
            request.url.setHost(m_origin.host());
            request.url.setPort(m_origin.port());
            request.urlAsReceived.clear();
        }
    }
    m_session.start(std::move(request), std::move(stop), std::move(done));
}

} // namespace zenvor::test
