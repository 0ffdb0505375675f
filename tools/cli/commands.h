#pragma once

#include "platform/task.h"

namespace zenvor::cli {

struct CommandLine;

/// Runs the command on the library's own client; the exit code of the program. The last line on
/// standard error is the description of what failed.
Task<int> run(CommandLine line);

} // namespace zenvor::cli
