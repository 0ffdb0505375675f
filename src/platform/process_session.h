#pragma once

#include "platform/clock.h"

#include <QCoreApplication>

namespace zenvor {

/// A session of the class \a Session for the whole process: the same one at each call, made by the
/// first. Never destroyed, but ended with the application object, so that nothing delays or outlives
/// its end. Where there is none, or it is never destroyed, a session ends with the process by itself.
template<typename Session>
Session &processSession()
{
    static auto *session = [] {
        static auto *made = new Session(Clock::system());
        qAddPostRoutine([] { made->end(); });
        return made;
    }();
    return *session;
}

} // namespace zenvor
