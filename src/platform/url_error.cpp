#include "platform/url_error.h"

namespace zenvor {

using namespace Qt::StringLiterals;

// The form tells a network failure and a time-out from other errors by phrases: "could not connect",
// "unable to resolve host" and "timed out" stand in these texts for exactly those failures.
QString UrlError::localizedDescription() const
{
    switch (m_code) {
    case UrlErrorCode::Unknown:
        return u"An unknown network error occurred."_s;
    case UrlErrorCode::Cancelled:
        return u"cancelled"_s;
    case UrlErrorCode::BadUrl:
        return u"The URL is malformed."_s;
    case UrlErrorCode::TimedOut:
        return u"The request timed out."_s;
    case UrlErrorCode::UnsupportedUrl:
        return u"The URL is not supported."_s;
    case UrlErrorCode::CannotFindHost:
        return u"Unable to resolve host."_s;
    case UrlErrorCode::CannotConnectToHost:
        return u"Could not connect to the server."_s;
    case UrlErrorCode::NetworkConnectionLost:
        return u"Could not connect: the network connection was lost."_s;
    case UrlErrorCode::TooManyRedirects:
        return u"The server redirected too many times."_s;
    case UrlErrorCode::NotConnectedToInternet:
        return u"Could not connect: the Internet connection appears to be offline."_s;
    case UrlErrorCode::CannotDecodeContent:
        return u"The content of the answer cannot be decoded."_s;
    case UrlErrorCode::SecureConnectionRequired:
        return u"A secure connection is required."_s;
    case UrlErrorCode::SecureConnectionFailed:
        return u"An SSL error has occurred and a secure connection to the server cannot be made."_s;
    case UrlErrorCode::ServerCertificateUntrusted:
        return u"The certificate for this server is invalid."_s;
    }
    Q_UNREACHABLE();
}

} // namespace zenvor
