#pragma once

#include <QString>

namespace driver {

/// Ends the demo: something is not as it has to be, and this says what.
struct Failure
{
    QString text;
};

} // namespace driver
