#include "faults/fault_pair.h"

#include "faults/fault_table.h"

namespace zenvor::test {
namespace {

using namespace Qt::StringLiterals;
using Extent = FaultPair::Extent;

#ifdef ZENVOR_FAULTS_CURL
constexpr SessionKind sessions[] = {SessionKind::Curl, SessionKind::Qt};
#else
constexpr SessionKind sessions[] = {SessionKind::Qt};
#endif

QList<Extent> extentsOf(const FaultPair &pair)
{
    if (pair.fault.isPlayedOnce)
        return {Extent::Once};
    if (isUpload(pair.kind))
        return pair.isHarmless() ? QList{Extent::Once} : QList{Extent::Always, Extent::Once};
    // Elsewhere a single loss differs from a lasting one only where the session makes up for it.
    return pair.isRepeated() ? QList{Extent::Always, Extent::Once} : QList{Extent::Always};
}

} // namespace

QString FaultPair::name() const
{
    const auto often = extent == Extent::Always ? u"always"_s : u"once"_s;
    return QStringList{nameOf(session), nameOf(kind), fault.name, often}.join(" / "_L1);
}

bool FaultPair::isHarmless() const
{
    const auto end = ending().kind;
    return end == Ending::Kind::Answer || (end == Ending::Kind::UnreadableAnswer && !readsBody(kind));
}

bool FaultPair::isSmoke() const
{
    // What takes its time is shown by one of the uploads for all of them.
    const bool isSlow = fault.reading.most > 0 || ending().code == -1001;
    const bool isShownElsewhere =
        isUpload(kind) && (kind != RequestKind::Put || (extent == Extent::Once && !isHarmless()));
    return fault.isSmoke && !(isSlow && isShownElsewhere);
}

bool FaultPair::isRepeated() const
{
    using Repeater = FaultCase::Repeater;
    const bool bySession = fault.repeater == Repeater::Anybody
        || (fault.repeater == Repeater::QtOnly && session == SessionKind::Qt);
    return bySession && kind != RequestKind::Report; // a report is sent once, on a connection of its own
}

QList<FaultPair> allFaultPairs()
{
    QList<FaultPair> pairs;
    for (const auto session : sessions) {
        for (const auto kind : allRequestKinds) {
            for (const auto &fault : faultTable()) {
                if (session == SessionKind::Qt && !fault.isPlayedOnQt)
                    continue;
                FaultPair pair{.fault = fault, .kind = kind, .session = session};
                for (const auto extent : extentsOf(pair)) {
                    pair.extent = extent;
                    pairs.append(pair);
                }
            }
        }
    }
    return pairs;
}

} // namespace zenvor::test
