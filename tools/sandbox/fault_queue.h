#pragma once

#include "sandbox/fault.h"

namespace zenvor::sandbox {

/// The faults still to be played, in the order of adding.
class FaultQueue
{
public:
    void add(const Fault &fault) { m_faults << fault; }
    void clear() { m_faults.clear(); }
    const QList<Fault> &waiting() const { return m_faults; }

    /// The fault for this request, counted down. The first that matches wins; one that still skips requests
    /// counts this one and leaves it to those behind it.
    std::optional<Fault> take(const QByteArray &method, const QString &path);

private:
    QList<Fault> m_faults;
};

} // namespace zenvor::sandbox
