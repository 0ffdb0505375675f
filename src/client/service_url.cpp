#include <zenvor/report_service.h>

#include "client/service_url.h"
#include "platform/loopback.h"

#include <mutex>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

struct ServiceUrl
{
    std::mutex mutex;
    QUrl origin{QStringLiteral(ZENVOR_REPORT_SERVICE_URL)}; // checked when the build is configured
    bool isInUse = false;
};

ServiceUrl &serviceUrl()
{
    static auto *url = new ServiceUrl; // never destroyed: background work may outlive static objects
    return *url;
}

bool isAcceptable(const QUrl &url)
{
    const bool isOrigin = url.isValid() && !url.host().isEmpty() && url.userInfo().isEmpty()
        && (url.path().isEmpty() || url.path() == "/"_L1) && !url.hasQuery() && !url.hasFragment();
    const bool isSafe =
        url.scheme() == "https"_L1 || (url.scheme() == "http"_L1 && isLoopbackHost(url.host()));
    return isOrigin && isSafe;
}

} // namespace

bool setReportServiceUrl(const QUrl &origin)
{
    if (!isAcceptable(origin))
        return false;
    auto &url = serviceUrl();
    const std::lock_guard lock(url.mutex);
    if (url.isInUse)
        return false;
    url.origin = origin;
    return true;
}

QUrl reportServiceUrl()
{
    auto &url = serviceUrl();
    const std::lock_guard lock(url.mutex);
    return url.origin;
}

QUrl useReportServiceUrl()
{
    auto &url = serviceUrl();
    const std::lock_guard lock(url.mutex);
    url.isInUse = true;
    return url.origin;
}

bool isStorageSecureEnough(const QUrl &service, const QUrl &storage)
{
    return storage.scheme() != "http"_L1 || service.scheme() != "https"_L1;
}

} // namespace zenvor
