#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace zenvor {

/// Seconds since 2001-01-01 00:00:00 UTC: the form in which moments are stored.
double referenceSeconds(const QDateTime &moment);

/// One ping that is wanted.
struct DevicePingQueueEntry
{
    QString bundleId;
    QString deviceId;
    /// Failed deliveries so far.
    qint64 attemptCount = 0;
    /// The earliest moment for the next one, in reference seconds.
    double nextAttemptAt = 0;

    friend bool operator==(const DevicePingQueueEntry &, const DevicePingQueueEntry &) = default;
};

/// The stored form: a JSON array of objects. Nothing for a list that JSON cannot hold.
std::optional<QByteArray> toJson(const QList<DevicePingQueueEntry> &entries);

/// The stored list; empty if any part of it is not as toJson() writes it.
QList<DevicePingQueueEntry> devicePingQueueEntries(const QByteArray &json);

} // namespace zenvor
