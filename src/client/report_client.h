#pragma once

#include "client/feedback_report.h"
#include "client/report_upload_attachment.h"
#include "platform/clock.h"
#include "platform/http_session.h"

#include <zenvor/zenvor_configuration.h>

#include <QList>
#include <QUrl>

namespace zenvor {

enum class TokenBundleValidationResult {
    Matched,
    /// The token is valid, but was issued for another app.
    BundleMismatch,
};

/// The report service, as far as the library uses it. A value without state of its own: copies speak
/// to the same session, any number of calls may run at once, from any executor, and a call goes on
/// when the client that started it is gone. A failed call throws ReportClientError or ServiceError, or
/// JsonEncodingError for a record that JSON cannot hold; nothing is logged.
class ReportClient
{
public:
    /// \a urlSession and \a clock must outlive every call.
    explicit ReportClient(ZenvorConfiguration configuration, HttpSession &urlSession = HttpSession::shared(),
                          const Clock &clock = Clock::system());

    /// Uploads the first five \a attachments, one after the other, and then posts the report with
    /// their identifiers. An attachment that fails three times is left out silently; only the report
    /// itself decides, and it is posted once. A stop ends the request under way.
    Task<> submit(FeedbackReportPayload payload, QList<ReportUploadAttachment> attachments,
                  StopToken stop = {}) const;

    /// Asks whether the configured token belongs to \a bundleId, which is sent as it is. Status 401
    /// throws ReportClientError::Kind::InvalidToken.
    Task<TokenBundleValidationResult> validateToken(QString bundleId, StopToken stop = {}) const;

    /// Tells the service that this device runs the app. Does nothing if either argument is blank.
    /// Status 401 throws ReportClientError::Kind::InvalidToken.
    Task<> pingDevice(QString bundleId, QString deviceId, StopToken stop = {}) const;

    /// Built once from the report service's origin, which is fixed from then on.
    static const QUrl &reportEndpoint();
    static const QUrl &validateEndpoint();
    static const QUrl &devicePingEndpoint();
    static const QUrl &uploadInitEndpoint();
    static const QUrl &uploadCompleteEndpoint();

private:
    Task<HttpResponse> performRequest(HttpRequest request, QString operation, StopToken stop) const;
    Task<HttpResponse> performSuccessfully(HttpRequest request, QString operation, StopToken stop) const;
    Task<HttpResponse> performTokenRequest(HttpRequest request, QString operation, StopToken stop) const;
    Task<std::optional<QString>> uploadWithRetries(ReportUploadAttachment attachment, QString token,
                                                   QString bundleId, StopToken stop) const;
    Task<QString> uploadAttachment(QByteArray data, QString kind, QString mimeType, QString token,
                                   QString bundleId, StopToken stop) const;

    ZenvorConfiguration m_configuration;
    HttpSession *m_urlSession;
    const Clock *m_clock;
};

} // namespace zenvor
