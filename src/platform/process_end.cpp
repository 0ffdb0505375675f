#include "platform/process_end.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace zenvor {
namespace {

thread_local bool t_hasEnded = false; // is never destroyed: a static object may still ask

struct EndOfThread
{
    std::vector<void (*)()> ends;

    ~EndOfThread()
    {
        t_hasEnded = true;
        for (auto end = ends.rbegin(); end != ends.rend(); ++end)
            (*end)();
    }
};

struct Works
{
    std::mutex mutex;
    std::condition_variable oneIsDone;
    int running = 0;
    bool areEnding = false;
};

Works &works()
{
    static auto *all = new Works; // never destroyed: threads may ask to the last
    return *all;
}

bool begin()
{
    const std::lock_guard lock(works().mutex);
    if (!works().areEnding)
        ++works().running;
    return !works().areEnding;
}

void endBackgroundWork()
{
    constexpr std::chrono::seconds patience(2); // a disk may not answer
    std::unique_lock lock(works().mutex);
    works().areEnding = true;
    works().oneIsDone.wait_for(lock, patience, [] { return works().running == 0; });
}

} // namespace

bool atEndOfThisThread(void (*end)())
{
    if (t_hasEnded)
        return false;
    thread_local EndOfThread thread;
    if (std::find(thread.ends.begin(), thread.ends.end(), end) != thread.ends.end())
        return false;
    thread.ends.push_back(end);
    return true;
}

void BackgroundWork::endWithThisThread()
{
    if (!atEndOfThisThread(endBackgroundWork))
        return;
    const std::lock_guard lock(works().mutex);
    works().areEnding = false; // an application object on another thread may have come and gone
}

BackgroundWork::BackgroundWork() : m_mayBegin(begin())
{
}

BackgroundWork::~BackgroundWork()
{
    if (!m_mayBegin)
        return;
    const std::lock_guard lock(works().mutex);
    --works().running;
    works().oneIsDone.notify_all();
}

} // namespace zenvor
