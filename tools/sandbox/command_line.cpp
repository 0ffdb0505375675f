#include "sandbox/command_line.h"

#include <QCommandLineParser>
#include <QStandardPaths>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

bool readTokens(const QStringList &pairs, SandboxOptions &options, QString *error)
{
    for (const QString &pair : pairs) {
        const qsizetype equals = pair.lastIndexOf(u'=');
        if (equals < 1 || equals == pair.size() - 1) {
            *error = u"--token '%1' is not of the form TOKEN=BUNDLE."_s.arg(pair);
            return false;
        }
        options.bundleIdsByToken.insert(pair.left(equals), pair.mid(equals + 1));
    }
    if (pairs.isEmpty())
        options.bundleIdsByToken.insert(u"demo-token"_s, u"com.example.demo"_s);
    return true;
}

} // namespace

std::optional<CommandLine> readCommandLine(const QStringList &arguments, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"A report service on this machine, for trying out and testing feedback."_s);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption port(u"port"_s, u"Listen on port N (default: any free one)."_s, u"N"_s, u"0"_s);
    const QCommandLineOption folder(u"folder"_s, u"Keep reports and uploads in DIR."_s, u"DIR"_s,
                                    QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    const QCommandLineOption token(u"token"_s, u"Accept TOKEN for the app BUNDLE; may be repeated."_s,
                                   u"TOKEN=BUNDLE"_s);
    const QCommandLineOption certificate(u"certificate"_s, u"Speak https with this certificate (PEM)."_s,
                                         u"FILE"_s);
    const QCommandLineOption key(u"key"_s, u"The certificate's private key (PEM)."_s, u"FILE"_s);
    const QCommandLineOption fault(u"fault"_s, u"Misbehave; may be repeated."_s, u"JSON"_s);
    const QCommandLineOption quiet(u"quiet"_s, u"Print no line for each request."_s);
    parser.addOptions({port, folder, token, certificate, key, fault, quiet});
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return {};
    }
    if (parser.isSet(help))
        parser.showHelp();
    if (!parser.positionalArguments().isEmpty()) {
        *error = u"Unexpected argument '%1'."_s.arg(parser.positionalArguments().first());
        return {};
    }

    CommandLine line;
    bool isPort = false;
    line.options.port = parser.value(port).toUShort(&isPort);
    if (!isPort) {
        *error = u"--port '%1' is not a number from 0 to 65535."_s.arg(parser.value(port));
        return {};
    }
    if (parser.isSet(certificate) != parser.isSet(key)) {
        *error = u"--certificate and --key go together."_s;
        return {};
    }
    line.options.folder = parser.value(folder);
    line.options.certificateFile = parser.value(certificate);
    line.options.keyFile = parser.value(key);
    line.isQuiet = parser.isSet(quiet);
    if (!readTokens(parser.values(token), line.options, error))
        return {};
    const QStringList faults = parser.values(fault);
    for (const QString &json : faults) {
        const auto parsed = parseFaults(json.toUtf8(), error);
        if (!parsed)
            return {};
        line.faults += *parsed;
    }
    return line;
}

} // namespace zenvor::sandbox
