#pragma once

#include "faults/fault_case.h"

#include <QList>

namespace zenvor::test {

/// One fault on one kind of request over one session.
struct FaultPair
{
    /// How often the fault strikes: each request of the kind (of uploads: until the first attachment is
    /// given up, so that the second one shows that it does not suffer), or the first one alone.
    enum class Extent { Always, Once };

    FaultCase fault;
    RequestKind kind = RequestKind::Validate;
    SessionKind session = SessionKind::Curl;
    Extent extent = Extent::Always;

    QString name() const;
    Ending ending() const { return fault.endingFor(kind, session); }
    /// Whether whoever made the request can go on as if nothing had been.
    bool isHarmless() const;
    /// Whether it belongs to the representative part.
    bool isSmoke() const;
    /// Whether the session sends it again when it is lost on a pooled connection.
    bool isRepeated() const;
};

/// All of them, over the sessions that this program is built with.
QList<FaultPair> allFaultPairs();

} // namespace zenvor::test
