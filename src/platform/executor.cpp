#include "platform/executor.h"

#include "platform/process_end.h"
#include "platform/thread_sanitizer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QRunnable>
#include <QThread>
#include <QThreadPool>

#include <utility>

namespace zenvor {
namespace {

thread_local Executor *t_current = nullptr;

// Marks the jobs of an executor on the running thread.
class CurrentExecutor
{
public:
    explicit CurrentExecutor(Executor *executor) : m_outer(std::exchange(t_current, executor)) {}
    ~CurrentExecutor() { t_current = m_outer; }
    CurrentExecutor(const CurrentExecutor &) = delete;
    CurrentExecutor &operator=(const CurrentExecutor &) = delete;

private:
    Executor *m_outer;
};

// Behind whatever the host has queued with the pool's default priority of 0.
constexpr int backgroundPriority = -1;

// Jobs are handed to Qt as objects of our own, made before givesTo(), and not as functions that Qt copies
// afterwards: the thread sanitizer sees all of their life.
class JobEvent final : public QEvent
{
public:
    explicit JobEvent(std::function<void()> job) : QEvent(User), m_job(std::move(job)) {}
    ~JobEvent() override { takesFrom(this); } // also where it was never delivered

    void run() { m_job(); }

private:
    std::function<void()> m_job;
};

class JobReceiver final : public QObject
{
public:
    bool event(QEvent *event) override
    {
        takesFrom(event);
        if (event->type() != QEvent::User)
            return QObject::event(event);
        static_cast<JobEvent *>(event)->run();
        return true;
    }
};

// Events for the main thread go to an object of our own that is never destroyed: another thread can
// post to it while the application object is going away, and what comes too late is just not delivered.
JobReceiver *mainThreadReceiver()
{
    static std::mutex mutex;
    static JobReceiver *receiver = nullptr;
    const std::lock_guard lock(mutex);
    const auto *application = QCoreApplication::instance();
    if (!application)
        return nullptr;
    if (!receiver || receiver->thread() != application->thread()) { // a new one can live on another
        receiver = new JobReceiver;
        receiver->moveToThread(application->thread());
    }
    return receiver;
}

} // namespace

std::shared_ptr<Executor> Executor::current()
{
    return t_current ? t_current->shared_from_this() : MainActor::shared();
}

const std::shared_ptr<MainActor> &MainActor::shared()
{
    // Never destroyed: threads may still post at the end of the process.
    static const auto *actor = new std::shared_ptr<MainActor>(std::make_shared<MainActor>());
    return *actor;
}

bool MainActor::isCurrentThread()
{
    const auto *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

void MainActor::post(std::function<void()> job)
{
    auto *receiver = mainThreadReceiver();
    if (!receiver)
        return;
    auto *event = new JobEvent(std::move(job));
    givesTo(event);
    QCoreApplication::postEvent(receiver, event);
}

// Holds the actor until its jobs are done.
class Actor::DrainRunnable final : public QRunnable
{
public:
    explicit DrainRunnable(std::shared_ptr<Actor> actor) : m_actor(std::move(actor)) {}
    ~DrainRunnable() override { takesFrom(this); }

    void run() override
    {
        takesFrom(this);
        m_actor->drain();
    }

private:
    const std::shared_ptr<Actor> m_actor;
};

void Actor::post(std::function<void()> job)
{
    auto *pool = QThreadPool::globalInstance();
    if (!pool) // gone with the application object
        return;
    if (MainActor::isCurrentThread())
        BackgroundWork::endWithThisThread();
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
        if (std::exchange(m_isDraining, true))
            return;
    }
    auto *runnable = new DrainRunnable(std::static_pointer_cast<Actor>(shared_from_this()));
    givesTo(runnable);
    pool->start(runnable, backgroundPriority);
}

void Actor::drain()
{
    const CurrentExecutor current(this);
    for (;;) {
        const BackgroundWork work;
        std::function<void()> job;
        {
            const std::lock_guard lock(m_mutex);
            if (m_jobs.empty() || !work) {
                m_isDraining = false;
                return;
            }
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

std::shared_ptr<Executor> makeBackgroundExecutor()
{
    // Serial as well: a Task that is resumed on one thread while another is still about to await it
    // would never be heard of again.
    return std::make_shared<Actor>();
}

} // namespace zenvor
