#pragma once

class QCommandLineParser;

/// Adds --service, --token, --bundle-id and --help to the options of \a parser, reads the command line of the
/// application object, and sets the feedback up by it. Returns false if that cannot be done as it is written,
/// and has then said so on standard error. Asked for help, it ends the process.
bool setUpByCommandLine(QCommandLineParser &parser);

/// The exit code of an app that was used wrongly.
constexpr int usedWrongly = 2;
