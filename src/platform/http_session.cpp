#include "platform/http_session.h"

#include "platform/awaitable_callback.h"
#include "platform/process_session.h"

#ifdef ZENVOR_HTTP_QT
#include "platform/qt_http_session.h"
#else
#include "platform/curl_http_session.h"
#endif

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

#ifdef ZENVOR_HTTP_QT
using BuiltSession = QtHttpSession;
#else
using BuiltSession = CurlHttpSession;
#endif

bool isHttp(const QUrl &url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

// A loading system answers these with bytes that are no HTTP response.
bool isLocalContent(const QUrl &url)
{
    return url.scheme() == "file"_L1 || url.scheme() == "data"_L1;
}

// The sessions with a thread that runs.
struct RunningSessions
{
    std::mutex mutex;
    std::vector<HttpSession *> sessions;
};

RunningSessions &runningSessions()
{
    static auto *running = new RunningSessions; // never destroyed: used at the end of the process
    return *running;
}

void endRunningSessions()
{
    std::vector<HttpSession *> sessions;
    {
        const std::lock_guard lock(runningSessions().mutex);
        sessions = runningSessions().sessions;
    }
    for (auto *session : sessions)
        session->end();
}

} // namespace

HttpSession::~HttpSession()
{
    auto &running = runningSessions();
    const std::lock_guard lock(running.mutex);
    running.sessions.erase(std::remove(running.sessions.begin(), running.sessions.end(), this),
                           running.sessions.end());
}

void HttpSession::endWithProcess()
{
    auto &running = runningSessions();
    const std::lock_guard lock(running.mutex);
    std::atexit(endRunningSessions); // more than once does no harm
    if (std::find(running.sessions.begin(), running.sessions.end(), this) == running.sessions.end())
        running.sessions.push_back(this);
}

Task<HttpResponse> HttpSession::send(HttpRequest request, StopToken stop)
{
    if (!request.url.isValid())
        throw UrlError(UrlErrorCode::BadUrl);
    if (isLocalContent(request.url))
        co_return HttpResponse();
    if (!isHttp(request.url))
        throw UrlError(UrlErrorCode::UnsupportedUrl);
    if (request.url.host().isEmpty())
        throw UrlError(UrlErrorCode::CannotFindHost);

    const auto shared = std::make_shared<HttpRequest>(std::move(request));
    AwaitableCallback<Result> finished(
        [this, shared, stop](Done done) { start(std::move(*shared), stop, std::move(done)); });
    Result result = co_await finished;
    if (const auto *code = std::get_if<UrlErrorCode>(&result))
        throw UrlError(*code);
    co_return std::move(std::get<HttpResponse>(result));
}

void endSessionsWithThisThread()
{
    struct End
    {
        ~End() { endRunningSessions(); }
    };
    thread_local const End end;
}

HttpSession &HttpSession::shared()
{
    return processSession<BuiltSession>();
}

} // namespace zenvor
