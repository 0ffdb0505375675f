#include "client/report_client_error.h"

namespace zenvor {

using namespace Qt::StringLiterals;

ReportClientError ReportClientError::unexpectedStatusCode(int statusCode)
{
    ReportClientError error(Kind::UnexpectedStatusCode);
    error.m_statusCode = statusCode;
    return error;
}

QString ReportClientError::localizedDescription() const
{
    switch (m_kind) {
    case Kind::UnexpectedStatusCode:
        return "Server returned an error (status code: "_L1 + QString::number(m_statusCode) + ")."_L1;
    case Kind::InvalidHTTPResponse:
        return u"Could not parse server response."_s;
    case Kind::InvalidToken:
        return u"SDK token is invalid or revoked."_s;
    case Kind::InvalidValidationPayload:
        return u"Could not parse token validation response."_s;
    case Kind::InvalidUploadInitPayload:
        return u"Could not parse upload init response."_s;
    case Kind::InvalidUploadCompletePayload:
        return u"Could not parse upload completion response."_s;
    }
    Q_UNREACHABLE();
}

QString ServiceError::domain()
{
    return u"ZenvorSDK.ReportClient"_s;
}

} // namespace zenvor
