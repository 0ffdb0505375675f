#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace zenvor {

/// What os-release says of the system. The defaults hold for what it does not say.
struct OsRelease
{
    QString name = QStringLiteral("Linux");
    QString versionId;
};

/// Reads the text of an os-release file: shell assignments, of which the last one to a name counts,
/// with the shell's quoting. A line that the shell would not accept is passed over.
OsRelease parseOsRelease(QByteArrayView text);

/// The product name that the firmware's tables hold, trimmed. Absent if it is empty or one of the
/// texts that boards are delivered with when nobody has filled in a name.
std::optional<QString> parseProductName(QByteArrayView text);

} // namespace zenvor
