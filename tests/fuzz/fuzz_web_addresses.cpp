#include "client/service_url.h"
#include "fuzz_input.h"
#include "platform/http_redirect.h"
#include "platform/loopback.h"

#include <zenvor/report_service.h>

#include <QHostAddress>

#include <algorithm>

using namespace zenvor;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

bool isThisMachine(const QString &host)
{
    const QHostAddress address(host);
    return host == "localhost"_L1 || (!address.isNull() && address.isLoopback());
}

void requireSafeOrigin(const QUrl &url)
{
    require(!isLoopbackHost(url.host()) || isThisMachine(url.host()), "a loopback host is this machine");
    const auto before = reportServiceUrl();
    const bool isAccepted = setReportServiceUrl(url);
    require(reportServiceUrl() == (isAccepted ? url : before), "a refused origin changes nothing");
    if (!isAccepted)
        return;
    require(url.scheme() == "https"_L1 || (url.scheme() == "http"_L1 && isThisMachine(url.host())),
            "reports go out encrypted, or not at all");
    require(url.userInfo().isEmpty() && !url.host().isEmpty(), "an origin has a host and no credentials");
    const auto endpoint = url.resolved(QUrl(u"/v1/sdk/reports"_s));
    require(endpoint.isValid() && endpoint.host() == url.host() && endpoint.port() == url.port()
                && endpoint.path() == "/v1/sdk/reports"_L1,
            "an endpoint belongs to its origin");
    const QUrl storage(u"http://storage.example/x"_s);
    require(isStorageSecureEnough(url, storage) == (url.scheme() == "http"_L1),
            "files go the way reports go");
}

HttpHeaders privateHeaders()
{
    HttpHeaders headers;
    headers.set("Authorization"_ba, "secret"_ba);
    headers.set("cookie"_ba, "secret"_ba);
    headers.set("Content-Type"_ba, "application/json"_ba);
    return headers;
}

bool isSameOrigin(const QUrl &a, const QUrl &b)
{
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == "https"_L1 ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && port(a) == port(b);
}

void requireSafeRedirect(const HttpRequest &request, const HttpResponse &response)
{
    const auto result = redirected(request, response);
    const auto *next = std::get_if<HttpRequest>(&result);
    if (!next)
        return;
    require(next->url.isValid() && !next->url.host().isEmpty(), "a redirect leads to a host");
    require(next->url.scheme() == "https"_L1
                || (next->url.scheme() == "http"_L1 && request.url.scheme() == "http"_L1),
            "no redirect leads out of encryption");
    require(next->urlAsReceived.isEmpty(), "the old URL is not sent to the new host");
    const bool isKept = isSameOrigin(request.url, next->url);
    require(next->headers.contains("Authorization") == isKept && next->headers.contains("Cookie") == isKept,
            "what is meant for one host is not told to another");
    require(next->method == request.method || next->method == "GET", "a request becomes no other than GET");
    require(next->body.isEmpty() == (next->method == "GET"), "a body goes with the method");
}

void followRedirects(const QUrl &url, const QByteArray &location)
{
    HttpRequest request;
    request.url = url;
    request.urlAsReceived = url.toEncoded();
    request.headers = privateHeaders();
    request.body = "body"_ba;
    HttpResponse response;
    response.headers.append("location"_ba, location);
    for (const auto &method : {"POST"_ba, "PUT"_ba}) {
        request.method = method;
        for (const int status : {200, 301, 303, 307}) {
            response.status = status;
            require(isRedirect(response) == (status != 200 && !location.isEmpty()),
                    "a redirect says where to");
            if (isRedirect(response))
                requireSafeRedirect(request, response);
        }
    }
}

void requireWellFormedHeader(const QByteArray &name, const QByteArray &value)
{
    if (!HttpHeaders::isWellFormed(name, value))
        return;
    const auto isVisible = [](char c) {
        return c > 0x20 && c != 0x7f && c != ':';
    };
    require(!name.isEmpty() && std::all_of(name.begin(), name.end(), isVisible), "a name is one word");
    require(!hasControlBytes(value), "no field leaves its line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const Fields fields(data, size);
    const auto first = fields.at(0);
    const auto second = fields.at(1);
    requireWellFormedHeader(first, second);
    requireSafeOrigin(QUrl(QString::fromUtf8(first), QUrl::StrictMode));
    requireSafeOrigin(QUrl(QString::fromUtf8(first)));
    for (const QUrl &url : {QUrl(u"https://h.example/a/b"_s), QUrl(u"http://h.example:8080/"_s)})
        followRedirects(url, second);
    const auto url = QUrl::fromEncoded(first);
    const bool isSent = url.isValid() && !url.host().isEmpty();
    if (isSent && (url.scheme() == "http"_L1 || url.scheme() == "https"_L1))
        followRedirects(url, second);
    return 0;
}
