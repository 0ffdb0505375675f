#pragma once

#include "client/report_client.h"
#include "pingqueue/device_ping_queue_entry.h"
#include "platform/executor.h"
#include "platform/user_defaults.h"

namespace zenvor {

/// The pings that the report service has not taken yet. They live in the user defaults alone, survive
/// restarts, and are sent at least once. Absorbs every failure and logs nothing. Callable from any
/// thread; its work runs on an actor of its own.
class DevicePingQueue
{
public:
    /// The one queue of the process, on the store of the running application. First called on the main
    /// thread.
    static DevicePingQueue &shared();

    /// \a clock must outlive the queue, and the queue every call.
    explicit DevicePingQueue(UserDefaults storage, const Clock &clock = Clock::system());

    /// Wants a ping for this pair, due at once. Blank identifiers want nothing.
    Task<> enqueue(QString bundleId, QString deviceId);

    /// Delivers at most \a maxBatchSize due pings, one after the other, and keeps those that failed for
    /// a passing reason. Works on the list as it stood when called: what another call stores while this
    /// one waits for the network is overwritten at the end. A negative size ends the process.
    Task<> flush(ReportClient client, int maxBatchSize);

    /// The list as it is stored.
    Task<QList<DevicePingQueueEntry>> entries();

    static QString storageKey();

private:
    Task<> enqueueOnActor(QString bundleId, QString deviceId);
    Task<> flushOnActor(ReportClient client, int maxBatchSize);
    Task<QList<DevicePingQueueEntry>> entriesOnActor();
    QList<DevicePingQueueEntry> load() const;
    void save(const QList<DevicePingQueueEntry> &entries) const;
    double now() const;

    const std::shared_ptr<Actor> m_actor = std::make_shared<Actor>();
    const UserDefaults m_storage;
    const Clock &m_clock;
};

} // namespace zenvor
