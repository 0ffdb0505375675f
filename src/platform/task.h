#pragma once

#include <QCoroTask>

namespace zenvor {

/// An asynchronous function. It starts at once on the caller's executor, and everything it awaits
/// resumes it there. Its promise is not thread-safe: a Task of another executor is awaited through
/// runOn(), never directly. A dropped Task goes on running, and its exception vanishes.
template<typename T = void>
using Task = QCoro::Task<T>;

} // namespace zenvor
