#include "platform/openssl_exit.h"

#include <cstdint>

namespace zenvor {

void keepOpenSslToTheEnd(QFunctionPointer initialize)
{
    using Initialize = int (*)(std::uint64_t options, const void *settings);
    constexpr std::uint64_t noExitHandler = 0x80000;
    if (initialize)
        reinterpret_cast<Initialize>(initialize)(noExitHandler, nullptr);
}

} // namespace zenvor
