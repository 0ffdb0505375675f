#pragma once

#include <functional>
#include <memory>

namespace zenvor {

struct StopState;

/// Tells an operation that its result is no longer wanted. Stands for the standard library's token,
/// which libc++ 16 lacks. Copies share one state; a default-constructed token is never stopped.
class StopToken
{
public:
    StopToken() = default;
    bool stopRequested() const;

private:
    friend class StopSource;
    friend class StopCallback;
    explicit StopToken(std::shared_ptr<StopState> state);

    std::shared_ptr<StopState> m_state;
};

/// Makes tokens and stops them. From any thread.
class StopSource
{
public:
    StopSource();
    StopToken token() const { return StopToken(m_state); }
    bool stopRequested() const { return token().stopRequested(); }
    /// Runs the registered callbacks on this thread. Only the first request does anything.
    void requestStop();

private:
    std::shared_ptr<StopState> m_state;
};

/// Runs a function when a token is stopped: at once, inside the constructor, if it already is, else
/// on the thread that requests the stop. The destructor waits for a run on another thread.
class StopCallback
{
public:
    StopCallback(const StopToken &token, std::function<void()> function);
    ~StopCallback();
    StopCallback(const StopCallback &) = delete;
    StopCallback &operator=(const StopCallback &) = delete;

private:
    std::shared_ptr<StopState> m_state;
};

} // namespace zenvor
