#include "pingqueue/device_ping_queue.h"

#include "pingqueue/device_ping_rules.h"
#include "platform/awaitable_callback.h"
#include "platform/bundle.h"

namespace zenvor {

using namespace Qt::StringLiterals;

DevicePingQueue &DevicePingQueue::shared()
{
    // Never destroyed: background work may outlive static objects.
    static auto *queue =
        new DevicePingQueue(UserDefaults::forApplication(Bundle::main().identifier().value_or(QString())));
    return *queue;
}

DevicePingQueue::DevicePingQueue(UserDefaults storage, const Clock &clock)
    : m_storage(std::move(storage))
    , m_clock(clock)
{
}

QString DevicePingQueue::storageKey()
{
    return u"zenvor.device-ping.queue.v1"_s;
}

Task<> DevicePingQueue::enqueue(QString bundleId, QString deviceId)
{
    return runOn(m_actor, [this, bundleId, deviceId] { return enqueueOnActor(bundleId, deviceId); });
}

Task<> DevicePingQueue::flush(ReportClient client, int maxBatchSize)
{
    if (maxBatchSize < 0)
        qFatal("DevicePingQueue: the batch size is negative.");
    return runOn(m_actor, [this, client, maxBatchSize] { return flushOnActor(client, maxBatchSize); });
}

Task<QList<DevicePingQueueEntry>> DevicePingQueue::entries()
{
    return runOn(m_actor, [this] { return entriesOnActor(); });
}

Task<QList<DevicePingQueueEntry>> DevicePingQueue::entriesOnActor()
{
    co_return load();
}

Task<> DevicePingQueue::enqueueOnActor(QString bundleId, QString deviceId)
{
    const auto bundle = nonEmptyTrimmed(bundleId);
    const auto device = nonEmptyTrimmed(deviceId);
    if (bundle && device)
        save(withDevicePing(load(), *bundle, *device, now()));
    co_return;
}

Task<> DevicePingQueue::flushOnActor(ReportClient client, int maxBatchSize)
{
    auto working = load();
    const auto batch = devicePingBatch(working, now(), maxBatchSize);
    if (batch.isEmpty())
        co_return;
    for (const auto position : batch) {
        const auto entry = working.at(position);
        std::optional<DevicePingQueueEntry> kept;
        try {
            co_await client.pingDevice(entry.bundleId, entry.deviceId);
        } catch (const std::exception &error) {
            kept = afterFailure(entry, error, now());
        }
        if (kept)
            working[position] = *kept;
        else
            working.removeAt(position);
    }
    save(working);
}

QList<DevicePingQueueEntry> DevicePingQueue::load() const
{
    const auto stored = m_storage.data(storageKey());
    return stored ? devicePingQueueEntries(*stored) : QList<DevicePingQueueEntry>();
}

void DevicePingQueue::save(const QList<DevicePingQueueEntry> &entries) const
{
    if (const auto json = toJson(entries))
        m_storage.setData(storageKey(), *json);
}

double DevicePingQueue::now() const
{
    return referenceSeconds(m_clock.currentDateTime());
}

} // namespace zenvor
