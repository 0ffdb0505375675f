#pragma once

#include <QByteArray>
#include <QString>

#include <exception>
#include <optional>

class QUrl;

namespace zenvor {

struct HttpRequest;
struct HttpResponse;
class ServiceError;
class UrlError;

/// How the answers of the report service are judged: decisions without any I/O.

/// The failure of \a operation when its request got no response.
ServiceError networkError(const QString &operation, const QUrl &url, const UrlError &error);

/// Throws ServiceError, with the detail that the body gives, for a status outside 200 to 299.
void ensureSuccess(const QString &operation, const HttpRequest &request, const HttpResponse &response);

/// The explanation in the body of an error answer: its "message" or "error", or the text itself where
/// it is no JSON object. Never empty and never shortened.
std::optional<QString> parseServerErrorDetail(const QByteArray &body);

/// Whether a failed attachment upload is tried again after \a attempt tries.
bool shouldRetryUpload(const std::exception &error, int attempt);

} // namespace zenvor
