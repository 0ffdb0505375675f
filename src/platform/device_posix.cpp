#include "platform/device.h"

#include <sys/utsname.h>

namespace zenvor {

QString Device::machine()
{
    utsname names{};
    if (uname(&names) != 0)
        return {};
    return QString::fromUtf8(names.machine);
}

} // namespace zenvor
