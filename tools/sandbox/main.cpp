#include "sandbox/command_line.h"
#include "sandbox/exit_signals.h"

#include <QCoreApplication>

#include <cstdio>

using namespace zenvor::sandbox;
using namespace Qt::StringLiterals;

namespace {

constexpr int failed = 1;
constexpr int usedWrongly = 2;

void print(std::FILE *stream, const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream); // who reads the first line from a pipe waits for it
}

void greet(const Sandbox &sandbox, const SandboxOptions &options)
{
    const QString origin = sandbox.url().toString();
    print(stdout, u"Listening on "_s + origin);
    print(stdout, u"Inbox: "_s + origin + u"/   Folder: "_s + options.folder);
    for (auto it = options.bundleIdsByToken.begin(); it != options.bundleIdsByToken.end(); ++it)
        print(stdout, u"Token: %1 for the app %2"_s.arg(it.key(), it.value()));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"zenvor"_s);
    QCoreApplication::setApplicationName(u"zenvor-sandbox"_s);
    const ExitSignals signals;

    QString error;
    const auto line = readCommandLine(QCoreApplication::arguments(), &error);
    if (!line) {
        print(stderr, u"zenvor-sandbox: "_s + error);
        return usedWrongly;
    }
    Sandbox sandbox(line->options);
    for (const Fault &fault : line->faults)
        sandbox.addFault(fault);
    QStringList notes; // said while it starts; the first line is for the address
    const auto early =
        QObject::connect(&sandbox, &Sandbox::logged, [&](const QString &text) { notes << text; });
    if (!sandbox.listen(&error)) {
        print(stderr, u"zenvor-sandbox: "_s + error);
        return failed;
    }
    QObject::disconnect(early);
    greet(sandbox, line->options);
    for (const QString &note : notes)
        print(stdout, note);
    if (!line->isQuiet)
        QObject::connect(&sandbox, &Sandbox::logged, [](const QString &text) { print(stdout, text); });
    return QCoreApplication::exec();
}
