#pragma once

#include <QImage>
#include <QList>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>

namespace driver {

/// Finds things by their object names in whichever Quick window shows them, and uses them as a user does.
/// Whatever does not come about within ten seconds is a Failure.
class Screens
{
public:
    /// Those that can be seen, in the order in which the scene holds them.
    QList<QQuickItem *> findAll(QLatin1StringView name) const;
    bool isShown(QLatin1StringView name) const { return !findAll(name).isEmpty(); }
    /// Its property "text"; empty if it is not shown.
    QString text(QLatin1StringView name) const;

    /// Whether everything that is loaded in the background has come.
    bool hasSettled() const;

    /// Presses and releases in the middle of the item, number \a index of those of that name. What lies below
    /// the window is scrolled into it.
    void tap(QLatin1StringView name, int index = 0);
    /// Presses, moves and releases along \a points, in parts of the item's width and height.
    void draw(QLatin1StringView name, const QList<QPointF> &points);
    /// To whatever has the keyboard in the window of the last tap. Latin letters only.
    void type(QLatin1StringView text);

    /// \a what completes "waited in vain until …".
    void waitUntil(const QString &what, const std::function<bool()> &condition) const;
    /// Returns when a screen of the library, which covers its window, has come to rest there.
    void waitForScreen(QLatin1StringView name) const;
    void waitUntilGone(QLatin1StringView name) const;

    /// The window that shows the item, as it looks now.
    QImage picture(QLatin1StringView name) const;

private:
    void reveal(QQuickItem *target) const;
    QQuickItem *item(QLatin1StringView name, int index = 0) const;

    QPointer<QQuickWindow> m_lastTapped;
};

} // namespace driver
