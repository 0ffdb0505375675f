#pragma once

#include "faults/fault_case.h"

#include <QStringList>

#include <array>

namespace zenvor::test {

/// How many requests of each kind.
struct RequestCounts
{
    std::array<int, std::size(allRequestKinds)> numbers{};

    int &operator[](RequestKind kind) { return numbers.at(size_t(kind)); }
    int operator[](RequestKind kind) const { return numbers.at(size_t(kind)); }
    QString toString() const;
};

/// What comes of one call of the library, as its caller and its service see it. Both what the policy
/// expects and what was observed have this form.
struct Outcome
{
    QString result; ///< what the caller gets
    RequestCounts made; ///< requests that the client handed to its session, but for
    RequestCounts madeForSecond; ///< those for the second attachment
    RequestCounts arrived; ///< requests at the service
    QString kept; ///< what the report holds, or the ping queue
    QStringList refusals; ///< what the service itself objected to
    QString next; ///< what the next request on the same session gets
};

/// The limits that a call must keep.
struct Limits
{
    double leastSeconds = 0; ///< of the injected clock
    double mostSeconds = 0;
    qint64 mostMemory = 0; ///< bytes that become resident
};

/// What was taken of them.
struct Usage
{
    double seconds = 0;
    qint64 memory = 0;
};

/// One line for each thing that is not as expected.
QStringList differences(const Outcome &expected, const Outcome &actual);
QStringList excesses(const Limits &limits, const Usage &usage);

} // namespace zenvor::test
