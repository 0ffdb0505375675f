#pragma once

#include <QString>
#include <QStringList>

namespace zenvor {

/// Where the application keeps what it brings along, the first place first: compiled in, and the folder that
/// its system has for it. Only the former without an application object. Any thread.
QStringList resourceFolders();

/// Where the executable is; empty without an application object. Any thread.
QString executableFolder();

} // namespace zenvor
