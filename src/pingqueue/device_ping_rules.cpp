#include "pingqueue/device_ping_rules.h"

#include "client/report_client_error.h"

#include <algorithm>
#include <cmath>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

constexpr int minBackOff = 15;
constexpr int maxBackOff = 3600;

bool isDueEarlier(const DevicePingQueueEntry &a, const DevicePingQueueEntry &b)
{
    return a.nextAttemptAt < b.nextAttemptAt;
}

} // namespace

QList<DevicePingQueueEntry> withDevicePing(QList<DevicePingQueueEntry> entries, const QString &bundleId,
                                           const QString &deviceId, double now)
{
    const auto known = std::find_if(entries.begin(), entries.end(), [&](const DevicePingQueueEntry &entry) {
        return entry.bundleId == bundleId && entry.deviceId == deviceId;
    });
    if (known != entries.end())
        known->nextAttemptAt = std::min(known->nextAttemptAt, now);
    else
        entries.append({.bundleId = bundleId, .deviceId = deviceId, .attemptCount = 0, .nextAttemptAt = now});

    if (entries.size() > maxDevicePings) {
        std::stable_sort(entries.begin(), entries.end(), isDueEarlier);
        entries.resize(maxDevicePings);
    }
    return entries;
}

QList<qsizetype> devicePingBatch(const QList<DevicePingQueueEntry> &entries, double now, int maxBatchSize)
{
    QList<qsizetype> positions;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries.at(i).nextAttemptAt <= now)
            positions.append(i);
    }
    std::stable_sort(positions.begin(), positions.end(), [&entries](qsizetype a, qsizetype b) {
        return isDueEarlier(entries.at(a), entries.at(b));
    });
    positions.resize(std::min(positions.size(), qsizetype(maxBatchSize)));
    std::sort(positions.begin(), positions.end(), std::greater<>());
    return positions;
}

std::optional<DevicePingQueueEntry> afterFailure(DevicePingQueueEntry entry, const std::exception &error,
                                                 double now)
{
    // A damaged store may hold any count.
    const auto attempt = std::clamp<qint64>(entry.attemptCount, 0, maxDevicePingAttempts) + 1;
    if (!shouldRetryDevicePing(error, attempt))
        return std::nullopt;
    entry.attemptCount = attempt;
    entry.nextAttemptAt = now + devicePingBackOff(attempt);
    return entry;
}

bool shouldRetryDevicePing(const std::exception &error, qint64 attempt)
{
    if (attempt >= maxDevicePingAttempts)
        return false;
    if (const auto *known = dynamic_cast<const ReportClientError *>(&error)) {
        const int status = known->statusCode();
        const bool isPassing = status < 400 || status > 499 || status == 408 || status == 429;
        if (known->kind() == ReportClientError::Kind::InvalidToken || !isPassing)
            return false;
    }
    // Errors of other kinds may quote a status as well.
    const auto description = localizedDescription(error).toLower();
    const auto lasting = {"status code: 400"_L1, "status code: 401"_L1, "status code: 403"_L1,
                          "status code: 404"_L1};
    return std::none_of(lasting.begin(), lasting.end(),
                        [&description](QLatin1StringView phrase) { return description.contains(phrase); });
}

int devicePingBackOff(qint64 attempt)
{
    const auto exponent = int(std::clamp<qint64>(attempt, 1, 10));
    return std::clamp(int(std::ldexp(5.0, exponent)), minBackOff, maxBackOff);
}

} // namespace zenvor
