#include "client/report_client_error.h"
#include "fuzz_input.h"
#include "pingqueue/device_ping_rules.h"

#include <algorithm>
#include <cmath>

using namespace zenvor;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

using Entries = QList<DevicePingQueueEntry>;

constexpr double now = 800000000; // in the year 2026
const auto bundleId = u"com.example.app"_s;
const auto deviceId = u"D1"_s;

bool isWhole(const Entries &entries)
{
    return std::all_of(entries.begin(), entries.end(), [](const DevicePingQueueEntry &entry) {
        return fitsJson(entry.bundleId) && fitsJson(entry.deviceId);
    });
}

/// \a entries as the next start of the app finds them.
Entries storedAndLoaded(const Entries &entries)
{
    const auto json = toJson(entries);
    require(json.has_value(), "a list that was read can be stored");
    const auto again = devicePingQueueEntries(*json);
    require(again.size() == entries.size(), "a stored list is complete");
    require(!isWhole(entries) || again == entries, "a stored list is the same when it is read again");
    return again;
}

Entries enqueue(const Entries &entries)
{
    const auto more = withDevicePing(entries, bundleId, deviceId, now);
    require(more.size() <= maxDevicePings, "no more pings are kept than the limit");
    const auto isWanted = [](const DevicePingQueueEntry &entry) {
        return entry.bundleId == bundleId && entry.deviceId == deviceId && entry.nextAttemptAt <= now;
    };
    require(entries.size() >= maxDevicePings || std::any_of(more.begin(), more.end(), isWanted),
            "a ping that is wanted is due where there is room");
    return more;
}

void requireBatch(const Entries &entries, int maxBatchSize)
{
    const auto batch = devicePingBatch(entries, now, maxBatchSize);
    require(batch.size() <= maxBatchSize, "a batch is no larger than asked for");
    require(std::adjacent_find(batch.begin(), batch.end(), std::less_equal<>()) == batch.end(),
            "a batch goes from the back and names no entry twice");
    double latest = -HUGE_VAL;
    for (const auto position : batch) {
        const double moment = entries.at(position).nextAttemptAt;
        require(moment <= now, "what is sent is due");
        latest = std::max(latest, moment);
    }
    for (qsizetype i = 0; i < entries.size() && batch.size() < maxBatchSize; ++i)
        require(batch.contains(i) || entries.at(i).nextAttemptAt > now, "all that is due fits the batch");
    for (qsizetype i = 0; i < entries.size(); ++i)
        require(batch.contains(i) || entries.at(i).nextAttemptAt >= latest || batch.isEmpty(),
                "the earliest are sent first");
}

void failUntilGivenUp(DevicePingQueueEntry entry)
{
    const ServiceError error(503, u"Device ping failed with status 503 (host=h)"_s);
    for (qint64 failures = 0; failures <= maxDevicePingAttempts; ++failures) {
        const auto kept = afterFailure(entry, error, now);
        if (!kept)
            return;
        require(kept->nextAttemptAt > now && kept->nextAttemptAt <= now + 3600,
                "the pause is within an hour");
        entry = *kept;
    }
    require(false, "a ping is given up some day");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto entries = storedAndLoaded(devicePingQueueEntries(bytesOf(data, size)));
    const auto more = storedAndLoaded(enqueue(entries));
    require(enqueue(more).size() == more.size(), "asking twice wants one ping");
    for (const int maxBatchSize : {0, 3, 100})
        requireBatch(more, maxBatchSize);
    for (const auto &entry : more)
        failUntilGivenUp(entry);
    return 0;
}
