#include "client/report_client.h"

#include "client/report_client_error.h"
#include "client/response_rules.h"
#include "client/service_url.h"
#include "client/wire_records.h"
#include "platform/json.h"

#include <utility>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr qsizetype maxAttachments = 5;
constexpr auto pauseAfterFirstTry = 300ms;

QUrl endpoint(const QString &path)
{
    static const QUrl origin = useReportServiceUrl();
    return origin.resolved(QUrl(path));
}

HttpRequest jsonPost(const QUrl &url, QByteArray body)
{
    HttpRequest request;
    request.method = "POST"_ba;
    request.url = url;
    request.headers.set("Content-Type"_ba, "application/json"_ba);
    request.body = std::move(body);
    return request;
}

// Fields that describe the framing would contradict the request that is really sent.
bool isOwnedByTransport(QByteArrayView name)
{
    return name.compare("Content-Length", Qt::CaseInsensitive) == 0
        || name.compare("Transfer-Encoding", Qt::CaseInsensitive) == 0
        || name.compare("Expect", Qt::CaseInsensitive) == 0;
}

HttpRequest storagePut(const InitUploadResponse &reserved, const QByteArray &data, const QString &mimeType)
{
    HttpRequest request;
    request.method = "PUT"_ba;
    request.url = QUrl(reserved.uploadURL, QUrl::StrictMode);
    request.urlAsReceived = reserved.uploadURL.toUtf8();
    request.body = data;
    request.readsBody = false;
    if (reserved.requiredHeaders) {
        for (const auto &[name, value] : reserved.requiredHeaders->asKeyValueRange()) {
            const auto field = name.toUtf8();
            const auto content = value.toUtf8();
            if (HttpHeaders::isWellFormed(field, content) && !isOwnedByTransport(field))
                request.headers.set(field, content);
        }
    }
    if (!request.headers.contains("Content-Type"))
        request.headers.set("Content-Type"_ba, mimeType.toUtf8());
    return request;
}

bool isAcceptable(const InitUploadResponse &response)
{
    // Half a surrogate pair has no UTF-8: the URL that goes out would be another than the one that was
    // checked.
    const bool isUrl =
        response.uploadURL.isValidUtf16() && QUrl(response.uploadURL, QUrl::StrictMode).isValid();
    return response.ok && isUrl && nonEmptyTrimmed(response.uploadId);
}

std::optional<QString> etagOf(const HttpResponse &response)
{
    const auto value = response.headers.value("ETag");
    if (!value || value->isEmpty())
        return std::nullopt;
    return value->isValidUtf8() ? QString::fromUtf8(*value) : QString::fromLatin1(*value);
}

// What the response holds, or the operation's own error if it cannot be read or is not accepted.
template<typename Response>
Response decoded(const HttpResponse &response, ReportClientError::Kind failure)
{
    try {
        return Response::fromJson(response.body);
    } catch (const JsonDecodingError &) {
        throw ReportClientError(failure);
    }
}

} // namespace

ReportClient::ReportClient(ZenvorConfiguration configuration, HttpSession &urlSession, const Clock &clock)
    : m_configuration(std::move(configuration))
    , m_urlSession(&urlSession)
    , m_clock(&clock)
{
}

const QUrl &ReportClient::reportEndpoint()
{
    static const QUrl url = endpoint(u"/v1/sdk/reports"_s);
    return url;
}

const QUrl &ReportClient::validateEndpoint()
{
    static const QUrl url = endpoint(u"/v1/sdk/validate"_s);
    return url;
}

const QUrl &ReportClient::devicePingEndpoint()
{
    static const QUrl url = endpoint(u"/v1/sdk/devices/ping"_s);
    return url;
}

const QUrl &ReportClient::uploadInitEndpoint()
{
    static const QUrl url = endpoint(u"/v1/sdk/uploads/init"_s);
    return url;
}

const QUrl &ReportClient::uploadCompleteEndpoint()
{
    static const QUrl url = endpoint(u"/v1/sdk/uploads/complete"_s);
    return url;
}

Task<> ReportClient::submit(FeedbackReportPayload payload, QList<ReportUploadAttachment> attachments,
                            StopToken stop) const
{
    const ReportClient self = *this; // the caller's may be replaced while this one waits
    if (!attachments.isEmpty()) {
        QStringList ids;
        for (const auto &attachment :
             std::as_const(attachments).first(qMin(attachments.size(), maxAttachments))) {
            if (attachment.data.isEmpty())
                continue;
            const auto uploadId =
                co_await self.uploadWithRetries(attachment, payload.token, payload.app.bundleId, stop);
            const auto id = uploadId ? nonEmptyTrimmed(*uploadId) : std::nullopt;
            if (!id)
                continue;
            if (!ids.contains(*id))
                ids.append(*id);
            if (!payload.screenshotUploadId && normalizeAttachment(attachment).kind == "screenshot"_L1)
                payload.screenshotUploadId = id;
        }
        payload.attachmentUploadIds = ids.isEmpty() ? std::nullopt : std::optional(ids);
    }

    auto request = jsonPost(reportEndpoint(), toJson(payload));
    request.readsBody = false;
    request.isSentOnce = true;
    co_await self.performSuccessfully(std::move(request), u"Report submit"_s, stop);
}

Task<TokenBundleValidationResult> ReportClient::validateToken(QString bundleId, StopToken stop) const
{
    const ReportClient self = *this;
    const ValidateTokenRequest message{.token = self.m_configuration.token(), .bundleId = bundleId};
    auto request = jsonPost(validateEndpoint(), message.toJson());
    const auto response = co_await self.performTokenRequest(std::move(request), u"Token validate"_s, stop);
    const auto validation =
        decoded<ValidateTokenResponse>(response, ReportClientError::Kind::InvalidValidationPayload);
    co_return validation.match ? TokenBundleValidationResult::Matched
                               : TokenBundleValidationResult::BundleMismatch;
}

Task<> ReportClient::pingDevice(QString bundleId, QString deviceId, StopToken stop) const
{
    const ReportClient self = *this;
    const auto bundle = nonEmptyTrimmed(bundleId);
    const auto device = nonEmptyTrimmed(deviceId);
    if (!bundle || !device)
        co_return;
    const DevicePingRequest message{
        .token = self.m_configuration.token(), .bundleId = *bundle, .deviceId = *device};
    auto request = jsonPost(devicePingEndpoint(), message.toJson());
    request.readsBody = false;
    co_await self.performTokenRequest(std::move(request), u"Device ping"_s, stop);
}

Task<HttpResponse> ReportClient::performRequest(HttpRequest request, QString operation, StopToken stop) const
{
    const auto url = request.url;
    std::optional<HttpResponse> response;
    try {
        response = co_await m_urlSession->send(std::move(request), stop);
    } catch (const UrlError &error) {
        throw networkError(operation, url, error);
    }
    if (response->status == 0)
        throw ReportClientError(ReportClientError::Kind::InvalidHTTPResponse);
    co_return std::move(*response);
}

Task<HttpResponse> ReportClient::performTokenRequest(HttpRequest request, QString operation,
                                                     StopToken stop) const
{
    auto response = co_await performRequest(request, operation, stop);
    if (response.status == 401)
        throw ReportClientError(ReportClientError::Kind::InvalidToken);
    ensureSuccess(operation, request, response);
    co_return response;
}

Task<HttpResponse> ReportClient::performSuccessfully(HttpRequest request, QString operation,
                                                     StopToken stop) const
{
    auto response = co_await performRequest(request, operation, stop);
    ensureSuccess(operation, request, response);
    co_return response;
}

Task<std::optional<QString>> ReportClient::uploadWithRetries(ReportUploadAttachment attachment, QString token,
                                                             QString bundleId, StopToken stop) const
{
    const auto labels = normalizeAttachment(attachment);
    for (int attempt = 1;; ++attempt) {
        std::optional<QString> uploadId;
        bool isWorthAnotherTry = false;
        try {
            uploadId = co_await uploadAttachment(attachment.data, labels.kind, labels.mimeType, token,
                                                 bundleId, stop);
        } catch (const std::exception &error) {
            isWorthAnotherTry = shouldRetryUpload(error, attempt);
        }
        if (!isWorthAnotherTry)
            co_return uploadId;
        co_await m_clock->sleep(attempt * pauseAfterFirstTry, stop);
    }
}

Task<QString> ReportClient::uploadAttachment(QByteArray data, QString kind, QString mimeType, QString token,
                                             QString bundleId, StopToken stop) const
{
    const InitUploadRequest reservation{
        .token = token, .bundleId = bundleId, .kind = kind, .mimeType = mimeType, .bytes = data.size()};
    auto initRequest = jsonPost(uploadInitEndpoint(), reservation.toJson());
    const auto initResponse = co_await performSuccessfully(std::move(initRequest), u"Upload init"_s, stop);
    const auto reserved =
        decoded<InitUploadResponse>(initResponse, ReportClientError::Kind::InvalidUploadInitPayload);
    if (!isAcceptable(reserved))
        throw ReportClientError(ReportClientError::Kind::InvalidUploadInitPayload);

    const auto put = u"Upload PUT"_s;
    auto putRequest = storagePut(reserved, data, mimeType);
    if (!isStorageSecureEnough(uploadInitEndpoint(), putRequest.url))
        throw networkError(put, putRequest.url, UrlError(UrlErrorCode::SecureConnectionRequired));
    const auto putResponse = co_await performSuccessfully(std::move(putRequest), put, stop);

    const CompleteUploadRequest confirmation{
        .token = token, .bundleId = bundleId, .uploadId = reserved.uploadId, .etag = etagOf(putResponse)};
    auto completeRequest = jsonPost(uploadCompleteEndpoint(), confirmation.toJson());
    const auto completeResponse =
        co_await performSuccessfully(std::move(completeRequest), u"Upload complete"_s, stop);
    const auto completed = decoded<CompleteUploadResponse>(
        completeResponse, ReportClientError::Kind::InvalidUploadCompletePayload);
    if (!completed.ok)
        throw ReportClientError(ReportClientError::Kind::InvalidUploadCompletePayload);
    co_return reserved.uploadId;
}

} // namespace zenvor
