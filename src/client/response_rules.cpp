#include "client/response_rules.h"

#include "client/feedback_report.h"
#include "client/report_client_error.h"
#include "platform/http_message.h"
#include "platform/url_error.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QUrl>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

constexpr int maxUploadTries = 3;

QString hostOf(const QUrl &url)
{
    const auto host = url.host();
    return host.isEmpty() ? u"unknown"_s : host;
}

// The elements joined, if all of them are strings.
std::optional<QString> joinedStrings(const QJsonArray &array)
{
    QStringList parts;
    for (const auto &element : array) {
        if (!element.isString())
            return std::nullopt;
        if (const auto part = nonEmptyTrimmed(element.toString()))
            parts.append(*part);
    }
    return nonEmptyTrimmed(parts.join(", "_L1));
}

std::optional<QString> detailOf(const QJsonObject &object)
{
    const auto message = object.value("message"_L1);
    const auto detail =
        message.isArray() ? joinedStrings(message.toArray()) : nonEmptyTrimmed(message.toString());
    return detail ? detail : nonEmptyTrimmed(object.value("error"_L1).toString());
}

} // namespace

ServiceError networkError(const QString &operation, const QUrl &url, const UrlError &error)
{
    QString message = operation + " network error (host="_L1 + hostOf(url) + u')';
    if (const auto detail = nonEmptyTrimmed(error.localizedDescription()))
        message += ": "_L1 + *detail;
    return ServiceError(int(error.code()), message);
}

void ensureSuccess(const QString &operation, const HttpRequest &request, const HttpResponse &response)
{
    if (response.status >= 200 && response.status <= 299)
        return;
    QString message = operation + " failed with status "_L1 + QString::number(response.status) + " (host="_L1
        + hostOf(request.url) + u')';
    if (const auto detail = parseServerErrorDetail(response.body))
        message += ": "_L1 + *detail;
    throw ServiceError(response.status, message);
}

std::optional<QString> parseServerErrorDetail(const QByteArray &body)
{
    if (const auto document = QJsonDocument::fromJson(body); document.isObject())
        return detailOf(document.object());
    if (!body.isValidUtf8())
        return std::nullopt;
    return nonEmptyTrimmed(QString::fromUtf8(body));
}

bool shouldRetryUpload(const std::exception &error, int attempt)
{
    if (attempt >= maxUploadTries)
        return false;
    const auto *known = dynamic_cast<const ReportClientError *>(&error);
    if (!known)
        return true;
    if (known->kind() == ReportClientError::Kind::UnexpectedStatusCode) {
        const int status = known->statusCode();
        return status < 400 || status > 499 || status == 408 || status == 429;
    }
    return known->kind() != ReportClientError::Kind::InvalidToken;
}

} // namespace zenvor
