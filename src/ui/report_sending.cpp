#include "ui/report_sending.h"

#include "client/report_client_error.h"
#include "platform/awaitable_callback.h"
#include "platform/image.h"

namespace zenvor {

namespace {

Task<std::optional<QByteArray>> encodedHere(QImage image)
{
    co_return encodeJpeg(image, screenshotQuality);
}

} // namespace

Task<std::optional<QByteArray>> encodedScreenshot(QImage image)
{
    const auto encoding = [image] {
        return encodedHere(image);
    };
    std::optional<QByteArray> jpeg;
    try {
        jpeg = co_await runOn(makeBackgroundExecutor(), encoding);
    } catch (const std::exception &) {
        jpeg.reset();
    }
    co_return jpeg;
}

Task<bool> isTokenRefused(ReportClient client, QString bundleId)
{
    bool isRefused = false;
    try {
        const auto result = co_await client.validateToken(std::move(bundleId));
        isRefused = result == TokenBundleValidationResult::BundleMismatch;
    } catch (const ReportClientError &error) {
        isRefused = error.kind() == ReportClientError::Kind::InvalidToken;
    } catch (const std::exception &) {
        isRefused = false;
    }
    co_return isRefused;
}

Task<std::optional<QString>> submitReport(ReportClient client, FeedbackReportPayload payload,
                                          QList<ReportUploadAttachment> attachments)
{
    std::optional<QString> failure;
    try {
        co_await client.submit(std::move(payload), std::move(attachments));
    } catch (const std::exception &error) {
        failure = localizedDescription(error);
    }
    co_return failure;
}

} // namespace zenvor
