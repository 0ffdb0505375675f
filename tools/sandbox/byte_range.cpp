#include "sandbox/byte_range.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

/// Nothing if it is no number; a number too large to hold is as good as the largest.
std::optional<qint64> readPosition(const QByteArray &digits)
{
    const bool areDigits = std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
    if (digits.isEmpty() || !areDigits)
        return {};
    bool fits = false;
    const qint64 position = digits.toLongLong(&fits);
    return fits ? position : std::numeric_limits<qint64>::max();
}

} // namespace

ByteRange readRange(const Headers &headers, qint64 size)
{
    const ByteRange whole;
    const auto values = headerValues(headers, "Range"_ba);
    const QByteArray unit = "bytes="_ba;
    // If-Range compares with a validator, and none is ever given out: whoever sends one gets everything.
    if (values.size() != 1 || !values.first().toLower().startsWith(unit)
        || !headerValues(headers, "If-Range"_ba).isEmpty())
        return whole;
    const QByteArray text = values.first().mid(unit.size()).trimmed();
    const qsizetype dash = text.indexOf('-');
    if (dash < 0)
        return whole;
    const auto first = readPosition(text.left(dash));
    const auto last = readPosition(text.mid(dash + 1));

    if (!first) {
        if (dash > 0 || !last)
            return whole;
        const qint64 wanted = std::min(*last, size); // "-500": the last 500
        return wanted == 0 ? ByteRange{ByteRange::Kind::OutOfReach}
                           : ByteRange{ByteRange::Kind::Part, size - wanted, size - 1};
    }
    const bool isOpen = text.size() == dash + 1;
    if ((!last && !isOpen) || (last && *last < *first))
        return whole;
    if (*first >= size)
        return {ByteRange::Kind::OutOfReach};
    return {ByteRange::Kind::Part, *first, isOpen ? size - 1 : std::min(*last, size - 1)};
}

} // namespace zenvor::sandbox
