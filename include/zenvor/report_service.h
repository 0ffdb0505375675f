#pragma once

#include <zenvor/zenvor_export.h>

class QUrl;

namespace zenvor {

/// Replaces the origin of the report service that the library was built for, for the rest of the
/// process. \a origin is scheme, host and port and nothing else: https, or http on the loopback
/// interface. Returns false, and changes nothing, for any other URL and once a request has been
/// prepared. From any thread.
ZENVOR_EXPORT bool setReportServiceUrl(const QUrl &origin);

/// The origin in use.
ZENVOR_EXPORT QUrl reportServiceUrl();

} // namespace zenvor
