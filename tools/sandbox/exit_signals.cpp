#include "sandbox/exit_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace zenvor::sandbox {

namespace {

int signalPipe[2] = {-1, -1};

// Next to nothing is allowed in a signal handler; writing to a pipe is.
extern "C" void passOn(int)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &byte, 1);
}

} // namespace

ExitSignals::ExitSignals(QObject *parent) : QObject(parent)
{
    if (::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals keep their own, abrupt way
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [] { QCoreApplication::exit(0); });
    struct sigaction action = {};
    action.sa_handler = passOn;
    for (const int number : {SIGINT, SIGTERM})
        ::sigaction(number, &action, nullptr);
}

} // namespace zenvor::sandbox
