#include "sandbox/fault_queue.h"

namespace zenvor::sandbox {

std::optional<Fault> FaultQueue::take(const QByteArray &method, const QString &path)
{
    for (qsizetype i = 0; i < m_faults.size(); ++i) {
        Fault &fault = m_faults[i];
        if (!fault.matches(method, path))
            continue;
        if (fault.skip > 0) {
            --fault.skip;
            continue;
        }
        const Fault taken = fault;
        if (fault.times > 0 && --fault.times == 0)
            m_faults.removeAt(i);
        return taken;
    }
    return {};
}

} // namespace zenvor::sandbox
