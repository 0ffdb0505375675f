#pragma once

#include "platform/http_session.h"

namespace zenvor::cli {

/// Stands between the client and another session, and tells the user on standard error what goes by:
/// methods, paths, sizes and statuses, never a query, a token or a text.
class ObservedSession final : public HttpSession
{
public:
    struct Options
    {
        bool listsRequests = false;
        /// A line that is written over and over while a file is uploaded: for terminals.
        bool showsProgress = false;
    };

    /// \a session must outlive this one, and this one every request.
    ObservedSession(HttpSession &session, Options options);

    void start(HttpRequest request, StopToken stop, Done done) override;
    void end() override { m_session.end(); }

private:
    HttpSession &m_session;
    Options m_options;
};

} // namespace zenvor::cli
