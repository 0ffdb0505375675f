#pragma once

#include "platform/clock.h"
#include "platform/executor.h"

#include <QCoreApplication>

#include <mutex>
#include <utility>
#include <vector>

namespace zenvor {

/// Ends every session when the calling thread, the main one, does.
void endSessionsWithThisThread();

/// The session of the class \a Session for the life of the application object: the same one at each call,
/// made by the first. It ends with that object, so that nothing delays or outlives its end; where there is
/// none, or it is never destroyed, with the process. Never destroyed: a client may still name one that has
/// ended. A later application object gets another one.
template<typename Session>
Session &processSession()
{
    static auto *mutex = new std::mutex; // as well needed to the end
    static Session *session = nullptr;
    static auto *all = new std::vector<Session *>; // for who looks for leaks
    if (MainActor::isCurrentThread())
        endSessionsWithThisThread();
    const std::lock_guard lock(*mutex);
    if (!session) {
        session = all->emplace_back(new Session(Clock::system()));
        session->endWithProcess();
        qAddPostRoutine([] {
            Session *ended = nullptr;
            {
                const std::lock_guard ending(*mutex);
                ended = std::exchange(session, nullptr);
            }
            if (ended)
                ended->end();
        });
    }
    return *session;
}

} // namespace zenvor
