#include "platform/http_session.h"

#include "platform/awaitable_callback.h"
#include "platform/process_end.h"
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

// The sessions to end with the process, with a thread or without: a pool thread may start one at that moment.
struct EndingSessions
{
    std::mutex mutex;
    std::vector<HttpSession *> sessions;
};

EndingSessions &endingSessions()
{
    static auto *ending = new EndingSessions; // never destroyed: used at the end of the process
    return *ending;
}

void endSessions()
{
    std::vector<HttpSession *> sessions;
    {
        const std::lock_guard lock(endingSessions().mutex);
        sessions = endingSessions().sessions;
    }
    for (auto *session : sessions)
        session->end();
}

} // namespace

HttpSession::~HttpSession()
{
    auto &ending = endingSessions();
    const std::lock_guard lock(ending.mutex);
    ending.sessions.erase(std::remove(ending.sessions.begin(), ending.sessions.end(), this),
                          ending.sessions.end());
}

void HttpSession::endWithProcess()
{
    auto &ending = endingSessions();
    const std::lock_guard lock(ending.mutex);
    std::atexit(endSessions); // more than once does no harm
    if (std::find(ending.sessions.begin(), ending.sessions.end(), this) == ending.sessions.end())
        ending.sessions.push_back(this);
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
    atEndOfThisThread(endSessions);
}

HttpSession &HttpSession::shared()
{
    return processSession<BuiltSession>();
}

} // namespace zenvor
