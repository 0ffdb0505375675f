#include "facade/device_registration.h"

#include "pingqueue/device_ping_queue.h"
#include "platform/awaitable_callback.h"
#include "platform/bundle.h"
#include "platform/device.h"

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr int maxBatchSize = 3;

// Nothing if the application cannot be told from others. The queue is not even asked for then: it finds its
// store by the identifier when it is made, and the host may set that later.
std::optional<QString> applicationIdentifier(const Bundle &bundle)
{
    return nonEmptyTrimmed(bundle.identifier().value_or(QString()));
}

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

void registerDevice(ReportClient client, Logger logger)
{
    const auto bundle = Bundle::main();
    const auto bundleId = applicationIdentifier(bundle);
    if (!bundleId)
        return;
    // detached: neither operation of the queue fails
    runOn(makeBackgroundExecutor(),
          [queue = &DevicePingQueue::shared(), client, bundle, bundleId = *bundleId, logger] {
              return enqueueAndFlush(queue, client, bundle, bundleId, logger);
          });
}

void sendDuePings(ReportClient client)
{
    if (applicationIdentifier(Bundle::main()))
        DevicePingQueue::shared().flush(std::move(client),
                                        maxBatchSize); // detached: it absorbs every failure
}

} // namespace zenvor
