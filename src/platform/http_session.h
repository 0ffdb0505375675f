#pragma once

#include "platform/http_message.h"
#include "platform/stop_token.h"
#include "platform/task.h"
#include "platform/url_error.h"

#include <functional>
#include <variant>

namespace zenvor {

/// Sends requests. One object serves the whole process, from any thread. Only http and https are ever
/// sent. Redirects are followed the way phone platforms do: at most 20, never from https to http, a
/// POST becomes a GET on 301, 302 and 303, a PUT only on 303. Nothing is authenticated, stored or
/// sent a second time, but for a request that a pooled connection lost before any answer.
class HttpSession
{
public:
    HttpSession() = default;
    HttpSession(const HttpSession &) = delete;
    HttpSession &operator=(const HttpSession &) = delete;
    virtual ~HttpSession();

    /// Sends \a request and waits for the whole answer, whatever its status. Throws UrlError. A stop
    /// ends the transfer with UrlErrorCode::Cancelled. A `file:` or `data:` URL gives a response that
    /// is not HTTP: nothing is read or written.
    Task<HttpResponse> send(HttpRequest request, StopToken stop = {});

    using Result = std::variant<HttpResponse, UrlErrorCode>;
    using Done = std::function<void(Result)>;

    /// What send() is made of: starts a request whose URL is valid, http or https, and has a host. From
    /// any thread; calls \a done once, from any thread.
    virtual void start(HttpRequest request, StopToken stop, Done done) = 0;

    /// Ends the session for good. What is under way is dropped without a result, and so is what comes
    /// later. From any thread but the session's own.
    virtual void end() = 0;

    /// Has the process end the session before it tears down what that uses, whenever it ends; nothing is
    /// started from then on. To be called when the session is made, and again on its thread when the
    /// libraries below are initialised: what is registered after they are is run before they are torn down.
    /// From any thread.
    void endWithProcess();

    /// The process-wide session. It costs nothing before its first request, and ends with the
    /// application object or the process, whichever is first; what waits for it then stays suspended.
    static HttpSession &shared();

    /// Bodies longer than this are not gathered. A few hundred bytes are what a service has to say; reading
    /// JSON can take more than forty times its size in memory.
    static constexpr qsizetype maxBodySize = 1024 * 1024;
    /// How much of a body that nobody reads is taken, and for how long, before the connection is
    /// dropped.
    static constexpr qsizetype maxDiscardedSize = 1024 * 1024;
    static constexpr std::chrono::seconds maxDiscardingTime{60};
    static constexpr int maxRedirects = 20;
};

} // namespace zenvor
