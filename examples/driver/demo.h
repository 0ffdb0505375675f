#pragma once

class QCommandLineParser;

namespace driver {

class ExampleHost;

/// --inbox and --pictures.
void addDriverOptions(QCommandLineParser &parser);

/// Sends a report from \a host as it looks at first, then one from it dark, both from a window of a phone's
/// size, then one from a dialog if it has one, and says how that went. Returns the exit code of the program.
int runDemo(ExampleHost &host, const QCommandLineParser &parser);

} // namespace driver
