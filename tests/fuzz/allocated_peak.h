#pragma once

#include <sanitizer/allocator_interface.h>

#include <algorithm>
#include <atomic>
#include <cstddef>

namespace zenvor::fuzz {

/// How much memory the process holds at most while this object lives, beyond what it held before. Sees every
/// allocation, those of libraries that are not instrumented as well. One at a time.
class AllocatedPeak
{
public:
    AllocatedPeak()
    {
        static const int hooks = __sanitizer_install_malloc_and_free_hooks(allocated, freed);
        static_cast<void>(hooks);
        s_held = 0;
        s_peak = 0;
    }

    long long bytes() const { return s_peak; }

private:
    static void allocated(const volatile void *, size_t size)
    {
        const auto held = s_held += static_cast<long long>(size);
        s_peak = std::max<long long>(s_peak, held);
    }

    static void freed(const volatile void *memory)
    {
        if (memory)
            s_held -=
                static_cast<long long>(__sanitizer_get_allocated_size(const_cast<const void *>(memory)));
    }

    static inline std::atomic<long long> s_held;
    static inline std::atomic<long long> s_peak;
};

} // namespace zenvor::fuzz
