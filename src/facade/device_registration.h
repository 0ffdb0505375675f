#pragma once

#include "client/report_client.h"
#include "platform/logger.h"

namespace zenvor {

/// Queues a ping for this device and this application, and sends what is due, all of it at background
/// priority; logs to \a logger when that is done. Does nothing for an application or a device without an
/// identifier. Main thread.
void registerDevice(ReportClient client, Logger logger);

/// Sends the pings of this application that are due at background priority, and says nothing. Main thread.
void sendDuePings(ReportClient client);

} // namespace zenvor
