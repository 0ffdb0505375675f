#pragma once

#include "platform/http_message.h"
#include "platform/http_session.h"
#include "platform/stop_token.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <variant>

#include <curl/curl.h>

namespace zenvor {

class Clock;

/// One request as libcurl runs it: on the session's thread, from open() on.
class CurlTransfer
{
public:
    using Result = std::variant<HttpResponse, UrlErrorCode>;
    using TimePoint = std::chrono::steady_clock::time_point;

    CurlTransfer(HttpRequest request, const Clock &clock);
    ~CurlTransfer();
    CurlTransfer(const CurlTransfer &) = delete;
    CurlTransfer &operator=(const CurlTransfer &) = delete;

    /// Makes the handle. \a caFile: certificates to trust; empty: those that libcurl was built for.
    CURL *open(const QByteArray &caFile);
    CURL *handle() const { return m_handle.get(); }

    /// The moment at which the transfer has stood still for too long.
    TimePoint deadline() const { return m_lastActivity + m_request.timeout; }
    /// The result once libcurl has ended the transfer with \a code.
    Result result(CURLcode code);

private:
    void setRequest(const QByteArray &url);
    void setHeaders();
    void setLimits(const QByteArray &caFile, bool isSecure);
    bool discardsBody() const { return m_response.status / 100 == 2 && !m_request.readsBody; }
    void onHeaderLine(QByteArrayView line);
    bool onBody(QByteArrayView bytes);
    bool onProgress(curl_off_t received, curl_off_t sent);
    void markActivity();
    UrlErrorCode errorCode(CURLcode code) const;

    static size_t readCallback(char *buffer, size_t size, size_t count, void *self);
    static int seekCallback(void *self, curl_off_t offset, int origin);
    static size_t headerCallback(char *data, size_t size, size_t count, void *self);
    static size_t writeCallback(char *data, size_t size, size_t count, void *self);
    static int progressCallback(void *self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent);

    struct HandleDeleter
    {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };

    HttpRequest m_request;
    const Clock &m_clock;
    std::unique_ptr<curl_slist, HandleDeleter> m_headerList;
    std::unique_ptr<CURL, HandleDeleter> m_handle;
    HttpResponse m_response;
    qsizetype m_sent = 0;
    curl_off_t m_moved = -1;
    qsizetype m_discarded = 0;
    TimePoint m_lastActivity;
    std::optional<TimePoint> m_discardingSince;
    bool m_isHeadComplete = false;
    bool m_isBodyTooLong = false;
    bool m_hasDiscardedEnough = false;
};

} // namespace zenvor
