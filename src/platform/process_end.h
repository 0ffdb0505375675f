#pragma once

namespace zenvor {

/// Has \a end called when the calling thread ends; once, however often it is asked for. To be called on the
/// main thread: exit(), called there, ends what belongs to that thread before it destroys anything static, so
/// that other threads can be ended while all that they use is still there. Gives whether it is the first
/// time; false, and nothing, once the thread ends.
bool atEndOfThisThread(void (*end)());

/// What a thread of a pool does while this object lives. exit() on the main thread waits for it, and lets no
/// more begin: what runs while static objects are destroyed would find some of them gone.
class BackgroundWork
{
public:
    /// On the main thread, before the first work is handed to another one.
    static void endWithThisThread();

    BackgroundWork();
    ~BackgroundWork();
    BackgroundWork(const BackgroundWork &) = delete;
    BackgroundWork &operator=(const BackgroundWork &) = delete;

    /// False once the process ends: then the work must not begin.
    explicit operator bool() const { return m_mayBegin; }

private:
    const bool m_mayBegin;
};

} // namespace zenvor
