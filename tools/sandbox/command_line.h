#pragma once

#include "sandbox/sandbox.h"

namespace zenvor::sandbox {

struct CommandLine
{
    SandboxOptions options;
    QList<Fault> faults;
    bool isQuiet = false;
};

/// What the program was asked to do. Nothing if it was asked wrongly; \a error then says what is wrong. Ends
/// the process itself for --help and --version.
std::optional<CommandLine> readCommandLine(const QStringList &arguments, QString *error);

} // namespace zenvor::sandbox
