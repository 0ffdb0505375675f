#include <zenvor/notification_center.h>

#include "platform/executor.h"

#include <algorithm>
#include <mutex>
#include <vector>

namespace zenvor {

namespace {

struct Observer
{
    QString name;
    NotificationCenter::Handler handler;
};

} // namespace

// Only the tokens own the observers, so that giving one up is all it takes to hear nothing more.
class NotificationCenter::Observers
{
public:
    void add(const std::shared_ptr<const Observer> &observer)
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_observers, [](const auto &known) { return known.expired(); });
        m_observers.push_back(observer);
    }

    void deliver(const Notification &notification)
    {
        for (const auto &known : snapshot()) {
            const auto observer = known.lock(); // keeps the handler alive that gives up its own token
            if (observer && observer->name == notification.name)
                observer->handler(notification);
        }
    }

private:
    std::vector<std::weak_ptr<const Observer>> snapshot()
    {
        const std::lock_guard lock(m_mutex);
        return m_observers;
    }

    std::mutex m_mutex;
    std::vector<std::weak_ptr<const Observer>> m_observers;
};

NotificationCenter &NotificationCenter::defaultCenter()
{
    static auto *center =
        new NotificationCenter; // never destroyed: others may post at the end of the process
    return *center;
}

NotificationCenter::NotificationCenter() : m_observers(std::make_shared<Observers>())
{
}

NotificationCenter::~NotificationCenter() = default;

NotificationToken NotificationCenter::addObserver(const QString &name, Handler handler)
{
    auto observer = std::make_shared<const Observer>(Observer{name, std::move(handler)});
    m_observers->add(observer);
    return observer;
}

void NotificationCenter::post(const QString &name, QObject *object)
{
    Notification notification{name, object};
    if (MainActor::isCurrentThread()) {
        m_observers->deliver(notification);
        return;
    }
    MainActor::shared()->post([observers = m_observers, notification = std::move(notification)] {
        observers->deliver(notification);
    });
}

} // namespace zenvor
