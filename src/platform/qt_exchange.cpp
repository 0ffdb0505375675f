#include "platform/qt_exchange.h"

#include "platform/clock.h"
#include "platform/http_redirect.h"
#include "platform/qt_network.h"
#include "platform/qt_request_body.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <utility>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

// How far Qt may read ahead. The body of a 401, which it hands over only at its end, it cuts off somewhat
// below that: what is left must still be seen to be too long.
constexpr qint64 readBufferSize = 8 * HttpSession::maxBodySize;

// Qt has one setting per name, and sends no field without a value.
void setHeaders(QNetworkRequest &request, const HttpHeaders &headers)
{
    for (const auto &[name, value] : headers.fields()) {
        const auto earlier = request.rawHeader(name);
        if (!earlier.isEmpty())
            request.setRawHeader(name, earlier + ", " + value);
        else
            request.setRawHeader(name,
                                 value.isEmpty() ? " "_ba : value); // blanks around a value are no part of it
    }
}

QNetworkRequest networkRequest(const HttpRequest &request, QtNetwork &network)
{
    QNetworkRequest result(request.url.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveFragment));
    setHeaders(result, request.headers);
    // Also for an empty body: the device that stands for it prevents repeats, and needs a length.
    result.setHeader(QNetworkRequest::ContentLengthHeader, request.body.size());
    result.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Version 2 repeats requests that a server turns away.
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Our own bound on bodies stops a bomb as well, and keeps the status.
    result.setDecompressedSafetyCheckThreshold(-1);
    if (request.url.scheme() == "https"_L1)
        result.setSslConfiguration(network.tls());
    return result;
}

// Qt counts statuses among its errors. What is left is a transfer that broke.
bool isStatus(QNetworkReply::NetworkError error, int status)
{
    if (error == QNetworkReply::NoError)
        return true;
    // Qt wants the body back for a redirect that it does not follow.
    if (error == QNetworkReply::ContentReSendError)
        return status == 307 || status == 308;
    if (status < 400)
        return false;
    return error == QNetworkReply::ProxyAuthenticationRequiredError
        || error == QNetworkReply::ProtocolInvalidOperationError
        || (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError)
        || (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError);
}

} // namespace

QtExchange::QtExchange(HttpRequest request, QNetworkAccessManager &manager, bool isManagerUsed,
                       QtNetwork &network, Done done)
    : m_request(std::move(request))
    , m_clock(network.clock())
    , m_done(std::move(done))
    , m_isPooled(isManagerUsed)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &QtExchange::onTimer);

    auto *body = new QtRequestBody(m_request.body);
    m_reply.reset(manager.sendCustomRequest(networkRequest(m_request, network), m_request.method, body));
    body->setParent(m_reply.get());
    auto *reply = m_reply.get();
    connect(reply, &QNetworkReply::socketStartedConnecting, this, [this] { m_isPooled = false; });
    connect(reply, &QNetworkReply::encrypted, this, [this] { m_hasConnected = true; });
    connect(reply, &QNetworkReply::requestSent, this, [this] { m_hasConnected = true; });
    connect(reply, &QNetworkReply::sslErrors, this, [this] { m_isUntrusted = true; });
    connect(reply, &QNetworkReply::uploadProgress, this, &QtExchange::onSent);
    connect(reply, &QNetworkReply::metaDataChanged, this, &QtExchange::onHead);
    connect(reply, &QNetworkReply::readyRead, this, &QtExchange::onReadable);
    connect(reply, &QNetworkReply::finished, this, &QtExchange::onFinished);
    // Behind the event that starts the request: before it, the limit is ignored. Once a body comes it may be
    // too late: as long as there are bytes, Qt's thread then gathers them and takes no event, not even its
    // end, for which this thread waits up to five seconds.
    QMetaObject::invokeMethod(this, &QtExchange::limitGathering, Qt::QueuedConnection);
    markActivity();
    startTimer();
}

QtExchange::~QtExchange() = default;

void QtExchange::limitGathering()
{
    m_reply->setReadBufferSize(readBufferSize);
}

void QtExchange::onHead()
{
    markActivity();
    m_response = {};
    m_response.status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    for (const auto &[name, value] : m_reply->rawHeaderPairs())
        m_response.headers.append(name, value);

    const int status = m_response.status;
    // An interim answer ends the reply: the real one would be taken for that of the next request.
    if (status / 100 == 1)
        return end(UrlErrorCode::NetworkConnectionLost);
    // A head that is too long or malformed comes without a field, and then nothing more would come.
    if (m_response.headers.fields().isEmpty() && status != 204 && status != 304)
        return end(UrlErrorCode::NetworkConnectionLost);
    const auto length = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (isRedirect(m_response) && length > HttpSession::maxBodySize)
        return end(UrlErrorCode::NetworkConnectionLost);
}

void QtExchange::onReadable()
{
    QByteArray piece(64 * 1024, Qt::Uninitialized);
    while (m_done) {
        const auto size = m_reply->read(piece.data(), piece.size());
        if (size <= 0)
            return;
        takeBody(QByteArrayView(piece.constData(), size));
    }
}

void QtExchange::onFinished()
{
    onReadable();
    if (!m_done)
        return;
    if (isStatus(m_reply->error(), m_response.status))
        end(std::move(m_response), true);
    else
        end(errorCode());
}

void QtExchange::onSent(qint64 sent)
{
    if (sent <= m_sent)
        return;
    m_sent = sent;
    markActivity();
    if (m_request.onProgress)
        m_request.onProgress(sent);
}

void QtExchange::onTimer()
{
    if (m_clock.now() < deadline())
        startTimer();
    else
        end(UrlErrorCode::TimedOut);
}

bool QtExchange::discardsBody() const
{
    return isRedirect(m_response) || (m_response.status / 100 == 2 && !m_request.readsBody);
}

void QtExchange::takeBody(QByteArrayView bytes)
{
    markActivity();
    if (discardsBody()) {
        if (!m_discardingSince)
            m_discardingSince = m_lastActivity;
        m_discarded += bytes.size();
        // Asked only as data comes: a body that stands still is a time-out, one that never ends is not.
        if (m_discarded > HttpSession::maxDiscardedSize
            || m_lastActivity - *m_discardingSince > HttpSession::maxDiscardingTime)
            end(std::move(m_response));
        return;
    }
    if (m_response.body.size() + bytes.size() > HttpSession::maxBodySize) {
        m_response.body.clear();
        return end(std::move(m_response));
    }
    m_response.body.append(bytes);
}

QtExchange::TimePoint QtExchange::deadline() const
{
    return m_lastActivity + m_request.timeout;
}

void QtExchange::markActivity()
{
    m_lastActivity = m_clock.now();
}

void QtExchange::startTimer()
{
    // Left alone by activity: it looks for itself, when it fires, whether it has to run on.
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline() - m_clock.now());
    m_timer.start(std::max(m_clock.realDuration(left), std::chrono::milliseconds(1)));
}

UrlErrorCode QtExchange::errorCode() const
{
    switch (m_reply->error()) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
        return UrlErrorCode::CannotConnectToHost;
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ProxyNotFoundError:
        return UrlErrorCode::CannotFindHost;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return UrlErrorCode::TimedOut;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
        return UrlErrorCode::NotConnectedToInternet;
    case QNetworkReply::UnknownNetworkError:
        // An unreachable network has no error of its own, but ends the attempt to connect.
        return m_hasConnected || m_isPooled || m_sent > 0 ? UrlErrorCode::NetworkConnectionLost
                                                          : UrlErrorCode::NotConnectedToInternet;
    case QNetworkReply::SslHandshakeFailedError:
        return m_isUntrusted ? UrlErrorCode::ServerCertificateUntrusted
                             : UrlErrorCode::SecureConnectionFailed;
    case QNetworkReply::UnknownContentError:
        return UrlErrorCode::CannotDecodeContent;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ContentReSendError:
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProxyConnectionClosedError:
        return UrlErrorCode::NetworkConnectionLost;
    default:
        return UrlErrorCode::Unknown;
    }
}

void QtExchange::end(HttpSession::Result result, bool isConnectionUsable)
{
    const auto *code = std::get_if<UrlErrorCode>(&result);
    const bool isLost = code && *code == UrlErrorCode::NetworkConnectionLost;
    m_timer.stop();
    m_reply->disconnect(this);
    const auto done = std::exchange(m_done, nullptr);
    done({.result = std::move(result),
          .isConnectionUsable = isConnectionUsable,
          .wasLostInPool = isLost && m_isPooled && m_response.status == 0});
}

} // namespace zenvor
