#pragma once

#include "faults/fault_case.h"

#include <QList>

namespace zenvor::test {

/// Every fault that the run plays.
const QList<FaultCase> &faultTable();

} // namespace zenvor::test
