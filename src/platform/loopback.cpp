#include "platform/loopback.h"

#include <QList>
#include <QString>

#include <algorithm>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

bool isByte(QStringView digits)
{
    const auto isDigit = [](QChar c) {
        return c >= u'0' && c <= u'9';
    };
    const bool isNumber = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), isDigit);
    const bool hasZerosBefore = digits.size() > 1 && digits.startsWith(u'0');
    return isNumber && !hasZerosBefore && digits.size() <= 3 && digits.toInt() <= 255;
}

} // namespace

bool isLoopbackHost(const QString &host)
{
    if (host == "localhost"_L1 || host == "::1"_L1)
        return true;
    // QUrl writes every form of an IPv4 address as four decimal bytes. What only looks like one is a name,
    // which may lead anywhere.
    const auto numbers = QStringView(host).split(u'.');
    return numbers.size() == 4 && numbers.first() == "127"_L1
        && std::all_of(numbers.begin(), numbers.end(), isByte);
}

} // namespace zenvor
