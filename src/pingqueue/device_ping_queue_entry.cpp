#include "pingqueue/device_ping_queue_entry.h"

#include "platform/json.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

constexpr auto bundleIdKey = "bundleId"_L1;
constexpr auto deviceIdKey = "deviceId"_L1;
constexpr auto attemptCountKey = "attemptCount"_L1;
constexpr auto nextAttemptAtKey = "nextAttemptAt"_L1;

// From the epoch of the system clock.
constexpr double referenceDate = 978307200;

DevicePingQueueEntry entry(const QJsonValue &value)
{
    const JsonReader reader(value.toObject());
    return {.bundleId = reader.string(bundleIdKey),
            .deviceId = reader.string(deviceIdKey),
            .attemptCount = reader.integer(attemptCountKey),
            .nextAttemptAt = reader.number(nextAttemptAtKey)};
}

} // namespace

double referenceSeconds(const QDateTime &moment)
{
    return double(moment.toMSecsSinceEpoch()) / 1000 - referenceDate;
}

std::optional<QByteArray> toJson(const QList<DevicePingQueueEntry> &entries)
{
    QJsonArray array;
    try {
        for (const auto &entry : entries) {
            JsonWriter json;
            json.string(bundleIdKey, entry.bundleId);
            json.string(deviceIdKey, entry.deviceId);
            json.integer(attemptCountKey, entry.attemptCount);
            json.number(nextAttemptAtKey, entry.nextAttemptAt);
            array.append(json.toObject());
        }
    } catch (const JsonEncodingError &) {
        return std::nullopt;
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QList<DevicePingQueueEntry> devicePingQueueEntries(const QByteArray &json)
{
    const auto document = QJsonDocument::fromJson(json);
    QList<DevicePingQueueEntry> entries;
    try {
        for (const auto &value : document.array())
            entries.append(entry(value));
    } catch (const JsonDecodingError &) {
        return {};
    }
    return entries;
}

} // namespace zenvor
