#pragma once

#include <QUrl>

namespace zenvor {

/// The origin of the report service, from now on fixed for the life of the process.
QUrl useReportServiceUrl();

} // namespace zenvor
