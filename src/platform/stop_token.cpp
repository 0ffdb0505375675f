#include "platform/stop_token.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace zenvor {

struct StopState
{
    std::mutex mutex;
    std::condition_variable callbackEnded;
    std::map<const StopCallback *, std::function<void()>> callbacks;
    const StopCallback *running = nullptr;
    std::thread::id runner;
    bool isStopped = false;
};

StopToken::StopToken(std::shared_ptr<StopState> state) : m_state(std::move(state))
{
}

bool StopToken::stopRequested() const
{
    if (!m_state)
        return false;
    const std::lock_guard lock(m_state->mutex);
    return m_state->isStopped;
}

StopSource::StopSource() : m_state(std::make_shared<StopState>())
{
}

void StopSource::requestStop()
{
    const auto state = m_state; // a callback may end this source
    std::unique_lock lock(state->mutex);
    if (std::exchange(state->isStopped, true))
        return;
    state->runner = std::this_thread::get_id();
    while (!state->callbacks.empty()) {
        auto entry = state->callbacks.extract(state->callbacks.begin());
        state->running = entry.key();
        lock.unlock();
        entry.mapped()();
        lock.lock();
        state->running = nullptr;
        state->callbackEnded.notify_all();
    }
}

StopCallback::StopCallback(const StopToken &token, std::function<void()> function) : m_state(token.m_state)
{
    if (!m_state)
        return;
    {
        const std::lock_guard lock(m_state->mutex);
        if (!m_state->isStopped) {
            m_state->callbacks.emplace(this, std::move(function));
            return;
        }
    }
    function();
}

StopCallback::~StopCallback()
{
    if (!m_state)
        return;
    std::unique_lock lock(m_state->mutex);
    m_state->callbacks.erase(this);
    // A callback that ends its own registration must not wait for itself.
    if (m_state->runner != std::this_thread::get_id())
        m_state->callbackEnded.wait(lock, [this] { return m_state->running != this; });
}

} // namespace zenvor
