#pragma once

#include "platform/error.h"

namespace zenvor {

/// What the report client reports by name. The texts are a contract: the form and the ping queue look
/// for phrases in them.
class ReportClientError final : public Error
{
public:
    enum class Kind {
        /// Never raised by the client, whose status failures are service errors; for callers that
        /// classify errors.
        UnexpectedStatusCode,
        InvalidHTTPResponse,
        InvalidToken,
        InvalidValidationPayload,
        InvalidUploadInitPayload,
        InvalidUploadCompletePayload,
    };

    explicit ReportClientError(Kind kind) : m_kind(kind) {}
    static ReportClientError unexpectedStatusCode(int statusCode);

    Kind kind() const { return m_kind; }
    /// Of UnexpectedStatusCode; 0 for the others.
    int statusCode() const { return m_statusCode; }
    QString localizedDescription() const override;

private:
    Kind m_kind;
    int m_statusCode = 0;
};

/// A transfer that failed or a status outside 200 to 299, in the general form of domain, code and
/// description. The code is the HTTP status or that of the UrlError.
class ServiceError final : public Error
{
public:
    ServiceError(int code, QString description) : m_code(code), m_description(std::move(description)) {}

    static QString domain();
    int code() const { return m_code; }
    QString localizedDescription() const override { return m_description; }

private:
    int m_code;
    QString m_description;
};

} // namespace zenvor
