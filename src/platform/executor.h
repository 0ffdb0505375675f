#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace zenvor {

/// Where a coroutine runs. What it awaits may end on any thread; it is always resumed here.
class Executor
{
public:
    Executor() = default;
    Executor(const Executor &) = delete;
    Executor &operator=(const Executor &) = delete;
    virtual ~Executor() = default;

    /// Runs \a job later, never inside this call. From any thread. A job that the end of the
    /// process overtakes is dropped unrun.
    virtual void post(std::function<void()> job) = 0;

    /// The executor whose job runs on this thread now; the main actor where none does.
    static Executor &current();

protected:
    /// Marks the jobs of one executor on the running thread.
    class Scope
    {
    public:
        explicit Scope(Executor &executor);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        Executor *m_outer;
    };
};

/// The application object's thread. Jobs posted while there is no application object are dropped.
class MainActor final : public Executor
{
public:
    static MainActor &shared();
    void post(std::function<void()> job) override;

private:
    MainActor() = default;
};

/// Detached work at background priority: jobs run side by side on the process-wide thread pool,
/// after everything that the host has queued there.
class BackgroundExecutor final : public Executor
{
public:
    static BackgroundExecutor &shared();
    void post(std::function<void()> job) override;

private:
    BackgroundExecutor() = default;
};

/// A serial executor on the process-wide thread pool: one job at a time, in the order of posting. A
/// coroutine that awaits gives the actor up until it is resumed. Holds no thread while it has nothing
/// to do. Must outlive its jobs and the coroutines that run on it.
class Actor final : public Executor
{
public:
    void post(std::function<void()> job) override;

private:
    // Shared with the thread that drains it, which may find it empty after the actor has gone.
    struct Queue
    {
        std::mutex mutex;
        std::deque<std::function<void()>> jobs;
        bool isDraining = false;
    };
    static void drain(Executor &self, Queue &queue);

    std::shared_ptr<Queue> m_queue = std::make_shared<Queue>();
};

} // namespace zenvor
