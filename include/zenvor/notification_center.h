#pragma once

#include <zenvor/zenvor_export.h>

#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

namespace zenvor {

/// Something that happened, told to whoever asked to hear of it.
struct Notification
{
    QString name;
    /// What it happened to. Null if that is gone by the time the notification is delivered.
    QPointer<QObject> object;
};

/// Observes for as long as it lives, then no more. May be given up inside the handler.
using NotificationToken = std::shared_ptr<const void>;

/// Carries named notifications inside the process. Observers are called on the application object's
/// thread, in the order in which they came: inside the call of post() if that is made there, else later.
/// What is posted without an application object reaches nobody. From any thread.
class ZENVOR_EXPORT NotificationCenter
{
public:
    using Handler = std::function<void(const Notification &)>;

    /// Lives until the process ends.
    static NotificationCenter &defaultCenter();

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter &) = delete;
    NotificationCenter &operator=(const NotificationCenter &) = delete;

    /// Calls \a handler for each notification named \a name, whatever its object.
    [[nodiscard]] NotificationToken addObserver(const QString &name, Handler handler);

    /// \a object must be alive during the call. An observer that is added meanwhile is not called.
    void post(const QString &name, QObject *object = nullptr);

private:
    class Observers;
    const std::shared_ptr<Observers> m_observers;
};

} // namespace zenvor
