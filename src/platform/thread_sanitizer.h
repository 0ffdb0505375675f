#pragma once

#if defined(__SANITIZE_THREAD__)
#define ZENVOR_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ZENVOR_THREAD_SANITIZER
#endif
#endif

#ifdef ZENVOR_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

namespace zenvor {

/// Tell the thread sanitizer that what happened before givesTo(object) on one thread happened before what
/// follows takesFrom(object) on another. Qt's queues see to that, but are not built with the sanitizer, which
/// would take every hand-over for a race. Nothing in any other build.
inline void givesTo([[maybe_unused]] void *object)
{
#ifdef ZENVOR_THREAD_SANITIZER
    __tsan_release(object);
#endif
}

inline void takesFrom([[maybe_unused]] void *object)
{
#ifdef ZENVOR_THREAD_SANITIZER
    __tsan_acquire(object);
#endif
}

} // namespace zenvor
