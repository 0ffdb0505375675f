#include "platform/awaitable_callback.h"

#include <mutex>
#include <unordered_set>

namespace zenvor {
namespace {

struct Registry
{
    std::mutex mutex;
    std::unordered_set<void *> frames;
};

Registry &registry()
{
    static auto *registry = new Registry; // never destroyed: that is its purpose
    return *registry;
}

} // namespace

void SuspendedCoroutines::add(std::coroutine_handle<> coroutine)
{
    const std::lock_guard lock(registry().mutex);
    registry().frames.insert(coroutine.address());
}

void SuspendedCoroutines::remove(std::coroutine_handle<> coroutine)
{
    const std::lock_guard lock(registry().mutex);
    registry().frames.erase(coroutine.address());
}

} // namespace zenvor
