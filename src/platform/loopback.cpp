#include "platform/loopback.h"

#include <QString>

#include <algorithm>

namespace zenvor {

using namespace Qt::StringLiterals;

bool isLoopbackHost(const QString &host)
{
    if (host == "localhost"_L1 || host == "::1"_L1)
        return true;
    // QUrl writes every form of an IPv4 address as four decimal numbers, so only a name has letters.
    const auto isAddressCharacter = [](QChar c) {
        return c == u'.' || (c >= u'0' && c <= u'9');
    };
    return host.startsWith("127."_L1) && host.count(u'.') == 3
        && std::all_of(host.begin(), host.end(), isAddressCharacter);
}

} // namespace zenvor
