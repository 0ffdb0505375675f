#include "platform/http_session.h"

#include "platform/awaitable_callback.h"

#include <memory>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

bool isHttp(const QUrl &url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

// A loading system answers these with bytes that are no HTTP response.
bool isLocalContent(const QUrl &url)
{
    return url.scheme() == "file"_L1 || url.scheme() == "data"_L1;
}

} // namespace

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

} // namespace zenvor
