#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace zenvor {

/// A UUID in upper case, drawn from the machine's own identifier in such a way that this one cannot be
/// found from it, and that vendors with different keys cannot tell that they see the same machine.
/// Absent if \a machineId is not a number in hexadecimal (hyphens allowed) or zero, as a system that is
/// not set up has it, or if \a key is blank.
std::optional<QString> vendorIdentifier(QByteArrayView machineId, QStringView key);

} // namespace zenvor
