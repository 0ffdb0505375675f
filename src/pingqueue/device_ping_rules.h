#pragma once

#include "pingqueue/device_ping_queue_entry.h"

#include <exception>

namespace zenvor {

/// What becomes of queued pings: decisions without any I/O. Moments are in reference seconds.

constexpr qsizetype maxDevicePings = 16;
constexpr qint64 maxDevicePingAttempts = 50;

/// \a entries with a ping for this pair that is due at \a now. One that is there keeps its place and
/// its count of failures. Of more than maxDevicePings the ones furthest in the future are dropped.
QList<DevicePingQueueEntry> withDevicePing(QList<DevicePingQueueEntry> entries, const QString &bundleId,
                                           const QString &deviceId, double now);

/// The positions of at most \a maxBatchSize entries that are due at \a now, the earliest due ones, in
/// the order of sending: from the back, so that removing one moves none that is still to come.
QList<qsizetype> devicePingBatch(const QList<DevicePingQueueEntry> &entries, double now, int maxBatchSize);

/// \a entry after a delivery failed with \a error; nothing if the ping is given up.
std::optional<DevicePingQueueEntry> afterFailure(DevicePingQueueEntry entry, const std::exception &error,
                                                 double now);

/// Whether a ping is kept whose delivery number \a attempt failed with \a error.
bool shouldRetryDevicePing(const std::exception &error, qint64 attempt);

/// Seconds until the next delivery after \a attempt failed ones.
int devicePingBackOff(qint64 attempt);

} // namespace zenvor
