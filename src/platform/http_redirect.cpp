#include "platform/http_redirect.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

constexpr auto location = "Location";
constexpr int followedStatuses[] = {301, 302, 303, 307, 308};

bool isSameOrigin(const QUrl &a, const QUrl &b)
{
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == "https"_L1 ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

HttpHeaders without(const HttpHeaders &headers, std::initializer_list<QByteArrayView> names)
{
    HttpHeaders rest;
    for (const auto &[name, value] : headers.fields()) {
        const auto isNamed = [&field = name](QByteArrayView dropped) {
            return field.compare(dropped, Qt::CaseInsensitive) == 0;
        };
        if (std::none_of(names.begin(), names.end(), isNamed))
            rest.append(name, value);
    }
    return rest;
}

} // namespace

bool isRedirect(const HttpResponse &response)
{
    const auto *end = std::end(followedStatuses);
    return std::find(std::begin(followedStatuses), end, response.status) != end
        && !response.headers.value(location).value_or(QByteArray()).isEmpty();
}

std::variant<HttpRequest, UrlErrorCode> redirected(HttpRequest request, const HttpResponse &response)
{
    const auto target =
        request.url.resolved(QUrl::fromEncoded(response.headers.value(location).value_or(QByteArray())));
    if (!target.isValid())
        return UrlErrorCode::BadUrl;
    const bool isSecure = target.scheme() == "https"_L1;
    if (!isSecure && (target.scheme() != "http"_L1 || request.url.scheme() == "https"_L1))
        return UrlErrorCode::UnsupportedUrl;
    if (target.host().isEmpty())
        return UrlErrorCode::BadUrl;

    const int status = response.status;
    if (status == 303 || (request.method == "POST" && status < 303)) {
        request.method = "GET";
        request.body.clear();
        request.headers = without(request.headers, {"Content-Type"});
    }
    if (!isSameOrigin(request.url, target))
        request.headers = without(request.headers, {"Authorization", "Cookie"});
    request.url = target;
    request.urlAsReceived.clear();
    return request;
}

} // namespace zenvor
