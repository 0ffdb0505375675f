#pragma once

#include <QString>

namespace zenvor {

/// What the user is told when a report could not be sent, from the \a description of the error: texts of our
/// own for what is known by a phrase in it, else the description as it is.
QString userFacingSendErrorMessage(const QString &description);

} // namespace zenvor
