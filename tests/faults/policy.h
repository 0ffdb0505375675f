#pragma once

#include "faults/fault_pair.h"
#include "faults/outcome.h"

namespace zenvor::test {

/// What the library owes its caller for each pair, derived from the contract alone: nothing here calls
/// the code that is tested.

Outcome expectedOutcome(const FaultPair &pair);
Limits limitsOf(const FaultPair &pair);
/// How often the service has to play the fault; 0: for ever.
int strikes(const FaultPair &pair);
/// How many requests of the client are struck.
int struckTries(const FaultPair &pair);

/// The host that the texts name, and what the queue held before.
constexpr auto serviceHost = "127.0.0.1";
constexpr int pingFailuresBefore = 2;
constexpr int backOffAfterThree = 40;

} // namespace zenvor::test
