#include "faults/outcome.h"

#include "support/sanitized.h"

namespace zenvor::test {
namespace {

using namespace Qt::StringLiterals;

constexpr int maxShown = 300;

QString shown(const QString &text)
{
    auto line = text.left(maxShown).replace(u'\n', u' ');
    return text.size() <= maxShown ? line : u"%1… (%2 letters)"_s.arg(line).arg(text.size());
}

} // namespace

QString RequestCounts::toString() const
{
    QStringList parts;
    for (const auto kind : allRequestKinds) {
        if ((*this)[kind] != 0)
            parts.append(u"%1 %2"_s.arg(nameOf(kind)).arg((*this)[kind]));
    }
    return parts.isEmpty() ? u"none"_s : parts.join(", "_L1);
}

QStringList differences(const Outcome &expected, const Outcome &actual)
{
    QStringList lines;
    const auto compare = [&lines](const char *what, const QString &wanted, const QString &got) {
        if (wanted != got)
            lines.append(
                u"%1: expected \"%2\", got \"%3\""_s.arg(QLatin1StringView(what), shown(wanted), shown(got)));
    };
    compare("the caller", expected.result, actual.result);
    compare("requests made", expected.made.toString(), actual.made.toString());
    compare("requests made for the second attachment", expected.madeForSecond.toString(),
            actual.madeForSecond.toString());
    compare("requests arrived", expected.arrived.toString(), actual.arrived.toString());
    compare("kept", expected.kept, actual.kept);
    compare("refused by the service", expected.refusals.join(", "_L1), actual.refusals.join(", "_L1));
    compare("the next request", expected.next, actual.next);
    return lines;
}

QStringList excesses(const Limits &limits, const Usage &usage)
{
    QStringList lines;
    // Half a second of ours is thirty of the injected clock.
    const double slack = test::isSanitized ? 30 : 0;
    if (usage.seconds < limits.leastSeconds || usage.seconds > limits.mostSeconds + slack)
        lines.append(u"seconds: expected %1 to %2, took %3"_s.arg(limits.leastSeconds)
                         .arg(limits.mostSeconds)
                         .arg(usage.seconds, 0, 'f', 1));
    if (usage.memory > limits.mostMemory)
        lines.append(u"memory: expected at most %1 KiB more, took %2"_s.arg(limits.mostMemory / 1024)
                         .arg(usage.memory / 1024));
    return lines;
}

} // namespace zenvor::test
