#pragma once

#include <QElapsedTimer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace zenvor::bench {

inline QQuickItem *find(QQuickItem *item, QLatin1StringView name)
{
    if (item->objectName() == name && item->isVisible())
        return item;
    const auto children = item->childItems();
    for (auto *child : children) {
        if (auto *found = find(child, name))
            return found;
    }
    return nullptr;
}

/// Milliseconds for which the event loop has not come round, at most.
class Stalls
{
public:
    Stalls()
    {
        QObject::connect(&m_tick, &QTimer::timeout, &m_tick, [this] {
            m_longest = std::max(m_longest, double(m_sinceTick.nsecsElapsed()) / 1e6);
            m_sinceTick.start();
        });
        m_sinceTick.start();
        m_tick.start(0);
    }
    double take() { return std::exchange(m_longest, 0); }

private:
    QTimer m_tick;
    QElapsedTimer m_sinceTick;
    double m_longest = 0;
};

inline void click(QQuickWindow *window, QLatin1StringView name)
{
    auto *item = find(window->contentItem(), name);
    if (!item)
        qFatal("%s is not there", name.data());
    QTest::mouseClick(window, Qt::LeftButton, {},
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
}

inline void waitFor(QQuickWindow *window, QLatin1StringView name, bool isShown = true)
{
    if (!QTest::qWaitFor([&] { return bool(find(window->contentItem(), name)) == isShown; }, 10'000))
        qFatal("waited in vain for %s", name.data());
}

} // namespace zenvor::bench
