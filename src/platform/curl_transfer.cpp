#include "platform/curl_transfer.h"

#include "platform/clock.h"
#include "platform/loopback.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

// Large enough that an upload of many megabytes is not bound by system calls.
constexpr long uploadBufferSize = 512 * 1024;

CurlTransfer *transfer(void *self)
{
    return static_cast<CurlTransfer *>(self);
}

// The text as it was received, as long as it holds nothing that must not go out as it stands:
// characters outside ASCII, and credentials, which libcurl would offer to the server.
QByteArray wireUrl(const HttpRequest &request)
{
    const auto isPlain = [](char c) {
        return c > 0x20 && c < 0x7f;
    };
    const auto &text = request.urlAsReceived;
    if (!text.isEmpty() && request.url.userInfo().isEmpty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    return request.url.toEncoded(QUrl::RemoveFragment | QUrl::RemoveUserInfo);
}

} // namespace

CurlTransfer::CurlTransfer(HttpRequest request, const Clock &clock)
    : m_request(std::move(request))
    , m_clock(clock)
{
}

CurlTransfer::~CurlTransfer() = default;

CURL *CurlTransfer::open(const QByteArray &caFile)
{
    m_handle.reset(curl_easy_init());
    CURL *const handle = m_handle.get();
    setRequest(wireUrl(m_request));
    setHeaders();
    setLimits(caFile, m_request.url.scheme() == "https"_L1);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, headerCallback);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, writeCallback);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(handle, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(handle, CURLOPT_XFERINFOFUNCTION, progressCallback);
    curl_easy_setopt(handle, CURLOPT_XFERINFODATA, this);
    markActivity();
    return handle;
}

void CurlTransfer::setRequest(const QByteArray &url)
{
    CURL *const handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_URL, url.constData());
    curl_easy_setopt(handle, CURLOPT_PATH_AS_IS, 1L);
    if (m_request.method == "POST") {
        curl_easy_setopt(handle, CURLOPT_POST, 1L);
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(m_request.body.size()));
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, m_request.body.constData()); // kept by us, not copied
    } else if (m_request.method == "PUT") {
        // A custom request with post fields would repeat an empty PUT after a redirect, and succeed.
        curl_easy_setopt(handle, CURLOPT_UPLOAD, 1L);
        curl_easy_setopt(handle, CURLOPT_INFILESIZE_LARGE, curl_off_t(m_request.body.size()));
        curl_easy_setopt(handle, CURLOPT_READFUNCTION, readCallback);
        curl_easy_setopt(handle, CURLOPT_READDATA, this);
        curl_easy_setopt(handle, CURLOPT_SEEKFUNCTION, seekCallback);
        curl_easy_setopt(handle, CURLOPT_SEEKDATA, this);
        curl_easy_setopt(handle, CURLOPT_UPLOAD_BUFFERSIZE, uploadBufferSize);
    } else {
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, m_request.method.constData());
    }
    // A pooled connection that dies is replaced and the request repeated; nothing else prevents that.
    curl_easy_setopt(handle, CURLOPT_FRESH_CONNECT, m_request.isSentOnce ? 1L : 0L);
}

void CurlTransfer::setHeaders()
{
    curl_slist *list = nullptr;
    for (const auto &[name, value] : m_request.headers.fields()) {
        // "Name;" is libcurl's way to write a field without a value; "Name: " would take the field out.
        const QByteArray line = value.trimmed().isEmpty() ? name + ';' : name + ": " + value;
        list = curl_slist_append(list, line.constData());
    }
    list =
        curl_slist_append(list, "Expect:"); // waiting for a "100 Continue" costs a second with most servers
    m_headerList.reset(list);
    curl_easy_setopt(m_handle.get(), CURLOPT_HTTPHEADER, list);
}

void CurlTransfer::setLimits(const QByteArray &caFile, bool isSecure)
{
    CURL *const handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, isSecure ? "https" : "http,https");
    curl_easy_setopt(handle, CURLOPT_REDIR_PROTOCOLS_STR, isSecure ? "https" : "http,https");
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(handle, CURLOPT_MAXREDIRS, long(HttpSession::maxRedirects));
    curl_easy_setopt(handle, CURLOPT_HTTPAUTH, long(CURLAUTH_NONE));
    // Version 2 would share a connection between requests, and repeats those that a server turns away.
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    // Without it the end of a request that is still looking up its host waits for the resolver, and
    // with it every other transfer.
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
    // Our own clock covers looking up, connecting and the TLS handshake as well.
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS, 0x7fffffffL);
    if (isLoopbackHost(m_request.url.host()))
        curl_easy_setopt(handle, CURLOPT_PROXY, "");
    if (!caFile.isEmpty()) {
        // A directory of certificates would be parsed again for each connection.
        curl_easy_setopt(handle, CURLOPT_CAPATH, nullptr);
        curl_easy_setopt(handle, CURLOPT_CAINFO, caFile.constData());
    }
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    curl_easy_setopt(handle, CURLOPT_SSL_OPTIONS, long(CURLSSLOPT_NATIVE_CA));
#endif
}

CurlTransfer::Result CurlTransfer::result(CURLcode code)
{
    if (code != CURLE_OK && !m_isBodyTooLong && !m_hasDiscardedEnough)
        return errorCode(code);
    if (!m_isHeadComplete) // libcurl takes a connection that ends inside the head for an answer without a
                           // body
        return UrlErrorCode::NetworkConnectionLost;
    if (m_isBodyTooLong)
        m_response.body.clear();
    return std::move(m_response);
}

void CurlTransfer::markActivity()
{
    m_lastActivity = m_clock.now();
}

void CurlTransfer::onHeaderLine(QByteArrayView line)
{
    markActivity();
    if (line.startsWith("HTTP/")) {
        // Interim answers and redirects come through here too: only the last head counts.
        long status = 0;
        curl_easy_getinfo(m_handle.get(), CURLINFO_RESPONSE_CODE, &status);
        m_response = HttpResponse();
        m_response.status = int(status);
        m_isHeadComplete = false;
        return;
    }
    if (m_isHeadComplete) // the fields behind a chunked body are not those of the head
        return;
    m_isHeadComplete = line.trimmed().isEmpty();
    if (const auto colon = line.indexOf(':'); colon > 0)
        m_response.headers.append(line.first(colon).trimmed().toByteArray(),
                                  line.sliced(colon + 1).trimmed().toByteArray());
}

bool CurlTransfer::onBody(QByteArrayView bytes)
{
    markActivity();
    if (discardsBody()) {
        if (!m_discardingSince)
            m_discardingSince = m_lastActivity;
        m_discarded += bytes.size();
        // Asked only as data comes: a body that stands still is a time-out, one that never ends is not.
        m_hasDiscardedEnough = m_discarded > HttpSession::maxDiscardedSize
            || m_lastActivity - *m_discardingSince > HttpSession::maxDiscardingTime;
        return !m_hasDiscardedEnough;
    }
    m_isBodyTooLong = m_response.body.size() + bytes.size() > HttpSession::maxBodySize;
    if (!m_isBodyTooLong)
        m_response.body.append(bytes);
    return !m_isBodyTooLong;
}

bool CurlTransfer::onProgress(curl_off_t received, curl_off_t sent)
{
    if (const auto moved = received + sent; moved != m_moved) {
        m_moved = moved;
        markActivity();
        if (m_request.onProgress)
            m_request.onProgress(sent);
    }
    // The body of a redirect reaches no other callback: without this it could be endless.
    const bool isRedirect = m_response.status / 100 == 3;
    return !isRedirect || received <= HttpSession::maxBodySize;
}

UrlErrorCode CurlTransfer::errorCode(CURLcode code) const
{
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return UrlErrorCode::TimedOut;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return UrlErrorCode::CannotFindHost;
    case CURLE_COULDNT_CONNECT: {
        long systemError = 0;
        curl_easy_getinfo(m_handle.get(), CURLINFO_OS_ERRNO, &systemError);
        if (systemError == ENETUNREACH || systemError == EHOSTUNREACH || systemError == ENETDOWN)
            return UrlErrorCode::NotConnectedToInternet;
        return systemError == ETIMEDOUT ? UrlErrorCode::TimedOut : UrlErrorCode::CannotConnectToHost;
    }
    case CURLE_UNSUPPORTED_PROTOCOL:
        // The request's own scheme was checked before: it is that of a redirect, or the answer is no HTTP.
        return m_response.status / 100 == 3 ? UrlErrorCode::UnsupportedUrl
                                            : UrlErrorCode::NetworkConnectionLost;
    case CURLE_URL_MALFORMAT:
        return UrlErrorCode::BadUrl;
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_SEND_FAIL_REWIND:
    case CURLE_PARTIAL_FILE:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
    case CURLE_ABORTED_BY_CALLBACK:
    case CURLE_OUT_OF_MEMORY: // what libcurl 7 says of a header that is too long
#if LIBCURL_VERSION_NUM >= 0x080600
    case CURLE_TOO_LARGE:
#endif
        return UrlErrorCode::NetworkConnectionLost;
    case CURLE_TOO_MANY_REDIRECTS:
        return UrlErrorCode::TooManyRedirects;
    case CURLE_BAD_CONTENT_ENCODING:
        return UrlErrorCode::CannotDecodeContent;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_ENGINE_INITFAILED:
        return UrlErrorCode::SecureConnectionFailed;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return UrlErrorCode::ServerCertificateUntrusted;
    default:
        return UrlErrorCode::Unknown;
    }
}

size_t CurlTransfer::readCallback(char *buffer, size_t size, size_t count, void *self)
{
    auto *t = transfer(self);
    const auto length = qMin(qsizetype(size * count), t->m_request.body.size() - t->m_sent);
    std::memcpy(buffer, t->m_request.body.constData() + t->m_sent, size_t(length));
    t->m_sent += length;
    return size_t(length);
}

int CurlTransfer::seekCallback(void *self, curl_off_t offset, int origin)
{
    auto *t = transfer(self);
    if (origin != SEEK_SET || offset < 0 || offset > t->m_request.body.size())
        return CURL_SEEKFUNC_FAIL;
    t->m_sent = qsizetype(offset);
    return CURL_SEEKFUNC_OK;
}

size_t CurlTransfer::headerCallback(char *data, size_t size, size_t count, void *self)
{
    transfer(self)->onHeaderLine(QByteArrayView(data, qsizetype(size * count)));
    return size * count;
}

size_t CurlTransfer::writeCallback(char *data, size_t size, size_t count, void *self)
{
    return transfer(self)->onBody(QByteArrayView(data, qsizetype(size * count))) ? size * count : 0;
}

int CurlTransfer::progressCallback(void *self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent)
{
    return transfer(self)->onProgress(received, sent) ? 0 : 1;
}

} // namespace zenvor
