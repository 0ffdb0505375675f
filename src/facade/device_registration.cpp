#include "facade/device_registration.h"

#include "pingqueue/device_ping_queue.h"
#include "platform/awaitable_callback.h"
#include "platform/device.h"

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxBatchSize = 3;

Task<> enqueueAndFlush(DevicePingQueue *queue, ReportClient client, Bundle bundle, QString bundleId,
                       Logger logger)
{
    // Read here: it takes a file on some systems.
    const auto deviceId = nonEmptyTrimmed(Device::identifierForVendor(bundle).value_or(QString()));
    if (!deviceId)
        co_return;
    co_await queue->enqueue(bundleId, *deviceId);
    co_await queue->flush(client, maxBatchSize);
    logger.debug("Device ping queue flushed."_L1);
}

} // namespace

void registerDevice(DevicePingQueue &queue, ReportClient client, Bundle bundle, Logger logger)
{
    const auto bundleId = nonEmptyTrimmed(bundle.identifier().value_or(QString()));
    if (!bundleId)
        return;
    // detached: neither operation of the queue fails
    runOn(makeBackgroundExecutor(), [queue = &queue, client, bundle, bundleId = *bundleId, logger] {
        return enqueueAndFlush(queue, client, bundle, bundleId, logger);
    });
}

void sendDuePings(DevicePingQueue &queue, ReportClient client)
{
    queue.flush(std::move(client), maxBatchSize); // detached: it absorbs every failure
}

} // namespace zenvor
