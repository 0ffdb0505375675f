#pragma once

#include "platform/task.h"

#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <variant>

namespace zenvor::test {

template<typename T>
struct Awaited
{
    std::optional<std::conditional_t<std::is_void_v<T>, std::monostate, T>> value;
    std::exception_ptr exception;
    QEventLoop loop;

    bool hasEnded() const { return value.has_value() || exception; }
};

template<typename T>
Task<> collect(Task<T> task, std::shared_ptr<Awaited<T>> awaited)
{
    try {
        if constexpr (std::is_void_v<T>) {
            co_await task;
            awaited->value.emplace();
        } else {
            auto value = co_await task;
            awaited->value.emplace(std::move(value));
        }
    } catch (...) {
        awaited->exception = std::current_exception();
    }
    awaited->loop.quit();
}

/// Runs the event loop until \a task has ended; gives its value or throws what it threw. A task that
/// does not end in time throws, so that a test that hangs fails instead.
template<typename T>
T await(Task<T> task, std::chrono::milliseconds limit = std::chrono::seconds(30))
{
    const auto awaited = std::make_shared<Awaited<T>>();
    collect(std::move(task), awaited); // detached: reports through the shared record
    if (!awaited->hasEnded()) {
        QTimer timeOut;
        timeOut.setSingleShot(true);
        QObject::connect(&timeOut, &QTimer::timeout, &awaited->loop, &QEventLoop::quit);
        timeOut.start(limit);
        awaited->loop.exec();
    }
    if (awaited->exception)
        std::rethrow_exception(awaited->exception);
    if (!awaited->value)
        throw std::runtime_error("the task did not end in time");
    if constexpr (!std::is_void_v<T>)
        return std::move(*awaited->value);
}

/// The error of type \a E that \a task ends with; nothing if it ends well. Another error is thrown on.
template<typename E, typename T>
std::optional<E> failureOf(Task<T> task, std::chrono::milliseconds limit = std::chrono::seconds(30))
{
    try {
        await(std::move(task), limit);
    } catch (const E &error) {
        return error;
    }
    return std::nullopt;
}

} // namespace zenvor::test
