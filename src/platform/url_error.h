#pragma once

#include "platform/error.h"

namespace zenvor {

/// Why a request got no response. The numbers are those that phone platforms use, so that a service's
/// support staff can read them.
enum class UrlErrorCode {
    Unknown = -1,
    Cancelled = -999,
    BadUrl = -1000,
    TimedOut = -1001,
    UnsupportedUrl = -1002,
    CannotFindHost = -1003,
    CannotConnectToHost = -1004,
    NetworkConnectionLost = -1005,
    TooManyRedirects = -1007,
    NotConnectedToInternet = -1009,
    CannotDecodeContent = -1015,
    SecureConnectionRequired = -1022,
    SecureConnectionFailed = -1200,
    ServerCertificateUntrusted = -1202,
};

/// A transfer that ended without a response. The text is fixed English per code and holds nothing of
/// the request: texts of the HTTP library quote whole URLs, with their signatures.
class UrlError final : public Error
{
public:
    explicit UrlError(UrlErrorCode code) : m_code(code) {}

    UrlErrorCode code() const { return m_code; }
    QString localizedDescription() const override;

private:
    UrlErrorCode m_code;
};

} // namespace zenvor
