#pragma once

#include <QUrl>

namespace zenvor {

/// The origin of the report service, from now on fixed for the life of the process.
QUrl useReportServiceUrl();

/// Whether files may be sent to \a storage when \a service says so: the storage of a secure service
/// must be secure as well. Says nothing of schemes other than http and https.
bool isStorageSecureEnough(const QUrl &service, const QUrl &storage);

} // namespace zenvor
