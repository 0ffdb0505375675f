#pragma once

#include "client/report_client.h"
#include "platform/bundle.h"
#include "platform/logger.h"

namespace zenvor {

class DevicePingQueue;

/// Queues a ping for this device and the application \a bundle, and sends what is due, all of it at
/// background priority; logs to \a logger when that is done. Does nothing for an application or a device
/// without an identifier. From any thread; \a queue must outlive the process's work.
void registerDevice(DevicePingQueue &queue, ReportClient client, Bundle bundle, Logger logger);

/// Sends the pings that are due at background priority, and says nothing.
void sendDuePings(DevicePingQueue &queue, ReportClient client);

} // namespace zenvor
