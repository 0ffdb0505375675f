#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace zenvor {

/// All of a regular file; nothing if it is none (a pipe or a device may never end), if it cannot be read, or
/// if it is larger than the memory. Any thread.
std::optional<QByteArray> contentsOfFile(const QString &path);

/// What follows the last dot of the file's name, as it is written there; empty for a name that begins with
/// its only dot.
QString extensionOfFile(const QString &path);

} // namespace zenvor
