#include "platform/executor.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <utility>

namespace zenvor {
namespace {

thread_local Executor *t_current = nullptr;

// Behind whatever the host has queued with the pool's default priority of 0.
constexpr int backgroundPriority = -1;

// Events for the main thread go to an object of our own that is never destroyed: another thread can
// post to it while the application object is going away, and what comes too late is just not delivered.
QObject *mainThreadReceiver()
{
    static std::mutex mutex;
    static QObject *receiver = nullptr;
    const std::lock_guard lock(mutex);
    if (const auto *application = QCoreApplication::instance(); application && !receiver) {
        receiver = new QObject;
        receiver->moveToThread(application->thread());
    }
    return receiver;
}

} // namespace

Executor &Executor::current()
{
    return t_current ? *t_current : MainActor::shared();
}

Executor::Scope::Scope(Executor &executor) : m_outer(std::exchange(t_current, &executor))
{
}

Executor::Scope::~Scope()
{
    t_current = m_outer;
}

MainActor &MainActor::shared()
{
    static auto *actor = new MainActor; // never destroyed: threads may still post at the end of the process
    return *actor;
}

void MainActor::post(std::function<void()> job)
{
    if (auto *receiver = mainThreadReceiver())
        QMetaObject::invokeMethod(receiver, std::move(job), Qt::QueuedConnection);
}

BackgroundExecutor &BackgroundExecutor::shared()
{
    static auto *executor = new BackgroundExecutor; // never destroyed, as the main actor
    return *executor;
}

void BackgroundExecutor::post(std::function<void()> job)
{
    QThreadPool::globalInstance()->start(
        [this, job = std::move(job)] {
            const Scope scope(*this);
            job();
        },
        backgroundPriority);
}

void Actor::post(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_queue->mutex);
        m_queue->jobs.push_back(std::move(job));
        if (std::exchange(m_queue->isDraining, true))
            return;
    }
    QThreadPool::globalInstance()->start([this, queue = m_queue] { drain(*this, *queue); },
                                         backgroundPriority);
}

void Actor::drain(Executor &self, Queue &queue)
{
    const Scope scope(self);
    for (;;) {
        std::function<void()> job;
        {
            const std::lock_guard lock(queue.mutex);
            if (queue.jobs.empty()) {
                queue.isDraining = false;
                return;
            }
            job = std::move(queue.jobs.front());
            queue.jobs.pop_front();
        }
        job();
    }
}

} // namespace zenvor
