#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace zenvor {

/// Where a coroutine runs: one job at a time. What a coroutine awaits may end on any thread; it is
/// always resumed here. Whoever will post to an executor shares it, so that it lives as long as a
/// coroutine that waits for its resumption.
class Executor : public std::enable_shared_from_this<Executor>
{
public:
    Executor() = default;
    Executor(const Executor &) = delete;
    Executor &operator=(const Executor &) = delete;
    virtual ~Executor() = default;

    /// Runs \a job later, never inside this call. From any thread. A job that the end of the
    /// application overtakes is dropped unrun.
    virtual void post(std::function<void()> job) = 0;

    /// The executor whose job runs on this thread now; the main actor where none does.
    static std::shared_ptr<Executor> current();
};

/// The application object's thread. Jobs posted while there is no application object are dropped.
class MainActor final : public Executor
{
public:
    static const std::shared_ptr<MainActor> &shared();
    /// Whether this is the application object's thread. No thread is while there is no such object.
    static bool isCurrentThread();
    void post(std::function<void()> job) override;
};

/// A serial executor on the process-wide thread pool, at background priority: behind whatever the host
/// has queued there. Runs its jobs in the order of posting. A coroutine that awaits gives the actor up
/// until it is resumed. Holds no thread while it has nothing to do. To be made as a shared pointer.
class Actor final : public Executor
{
public:
    void post(std::function<void()> job) override;

private:
    class DrainRunnable;

    void drain();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_jobs;
    bool m_isDraining = false;
};

/// For detached work at background priority: a new executor, which lives until that work is done.
std::shared_ptr<Executor> makeBackgroundExecutor();

} // namespace zenvor
