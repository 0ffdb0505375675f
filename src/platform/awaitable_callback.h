#pragma once

#include "platform/executor.h"
#include "platform/task.h"

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace zenvor {

/// The coroutines that wait for something outside. One that is never resumed, because the process
/// ends first, stays reachable here: it is neither resumed after the end nor reported as a leak.
class SuspendedCoroutines
{
public:
    static void add(std::coroutine_handle<> coroutine);
    static void remove(std::coroutine_handle<> coroutine);
};

/// Awaits an operation that reports its end through a callback. The operation is started by the
/// await and may call back once, from any thread, at once or later; the coroutine resumes on the
/// executor from which it awaited.
template<typename T>
class AwaitableCallback
{
public:
    using Callback = std::function<void(T)>;
    using Start = std::function<void(Callback)>;

    explicit AwaitableCallback(Start start) : m_start(std::move(start)) {}

    bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<> coroutine)
    {
        SuspendedCoroutines::add(coroutine);
        // The callback may come, and end this object, before the call below has returned.
        const Start start = std::move(m_start);
        start([this, coroutine, executor = Executor::current()](T value) {
            const auto shared =
                std::make_shared<T>(std::move(value)); // jobs are copyable, values need not be
            executor->post([this, coroutine, shared] {
                m_value.emplace(std::move(*shared));
                SuspendedCoroutines::remove(coroutine);
                coroutine.resume();
            });
        });
    }

    T await_resume() { return std::move(*m_value); }

private:
    Start m_start;
    std::optional<T> m_value;
};

/// The result of a Task that ran on another executor: the value, or the exception it ended with.
template<typename T>
struct Outcome
{
    std::shared_ptr<T> value;
    std::exception_ptr exception;
};

/// A captureless starter: what the coroutine needs lives in its own frame, as its parameters.
template<typename F, typename T>
Task<> runAndReport(F function, std::function<void(Outcome<T>)> done)
{
    Outcome<T> outcome;
    try {
        if constexpr (std::is_same_v<T, std::monostate>) {
            co_await function();
            outcome.value = std::make_shared<T>();
        } else {
            auto value = co_await function();
            outcome.value = std::make_shared<T>(std::move(value));
        }
    } catch (...) {
        outcome.exception = std::current_exception();
    }
    done(std::move(outcome));
}

/// Runs \a function, which returns a Task, on \a executor, and brings its value or its exception back
/// to the executor of the caller. The function is kept until its Task has ended.
template<typename F>
auto runOn(std::shared_ptr<Executor> executor, F function) -> std::invoke_result_t<F>
{
    using Value = typename std::invoke_result_t<F>::value_type;
    using T = std::conditional_t<std::is_void_v<Value>, std::monostate, Value>;
    AwaitableCallback<Outcome<T>> finished([executor, function](std::function<void(Outcome<T>)> done) {
        executor->post(
            [function, done] { runAndReport<F, T>(function, done); }); // detached: reports through done
    });
    const Outcome<T> outcome = co_await finished;
    if (outcome.exception)
        std::rethrow_exception(outcome.exception);
    if constexpr (!std::is_void_v<Value>)
        co_return std::move(*outcome.value);
}

} // namespace zenvor
