#pragma once

#include "platform/window.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <zenvor/zenvor.h>

namespace zenvor::test {

using namespace Qt::StringLiterals;

/// A host with one window that is full of what must not be reached, and what its user does to the library's
/// screens.
class Host
{
public:
    virtual ~Host() = default;

    virtual QWindow *window() const = 0;
    /// The window whose scene the screens are in; null while there is none.
    virtual QQuickWindow *scene() const = 0;

    virtual bool hasFieldFocus() const = 0;
    virtual QString fieldText() const = 0;
    /// How often something has reached the host, other than its field.
    virtual int reached() const = 0;

    /// Puts a stack of pages with one page into the window, and gives what takes that page away.
    virtual std::function<void()> showPageInStack() = 0;

    /// The first item of that name that can be seen.
    QQuickItem *find(QLatin1StringView name) const
    {
        return scene() ? find(name, scene()->contentItem()) : nullptr;
    }
    bool isShown(QLatin1StringView name) const { return find(name); }
    QString textOf(QLatin1StringView name) const
    {
        const auto *item = find(name);
        return item ? item->property("text").toString() : QString();
    }
    /// Where the item is in the window, once everything is laid out.
    QRectF rectOf(QLatin1StringView name) const
    {
        scene()->grabWindow();
        const auto *item = find(name);
        return item ? item->mapRectToScene({0, 0, item->width(), item->height()}) : QRectF();
    }

    /// Turns the wheel over the form until the item can be tapped.
    void scrollTo(QLatin1StringView name)
    {
        for (int turns = 0; turns < 20 && rectOf(name).center().y() > scene()->height(); ++turns) {
            const QPointF position(scene()->width() / 2.0, scene()->height() / 2.0);
            QWheelEvent event(position, scene()->mapToGlobal(position), {}, {0, -120}, {}, {},
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(scene(), &event);
            QTest::qWait(50);
        }
    }
    void tap(QLatin1StringView name)
    {
        scrollTo(name);
        const QRectF rect = rectOf(name);
        QVERIFY2(rect.isValid(), name.data());
        QTest::mouseClick(scene(), Qt::LeftButton, {}, rect.center().toPoint());
    }
    /// A finger goes down by \a distance points from \a start, up if that is negative.
    void drag(QPoint start, int distance)
    {
        static auto *const touchscreen = QTest::createTouchDevice(); // Qt keeps it listed to the end
        const int step = distance > 0 ? 10 : -10;
        QTest::touchEvent(scene(), touchscreen).press(0, start).commit();
        for (int moved = 0; moved != distance; moved += step) {
            start.ry() += step;
            QTest::qWait(20); // as fast as a finger is: what scrolls looks at the time
            QTest::touchEvent(scene(), touchscreen).move(0, start).commit();
        }
        QTest::touchEvent(scene(), touchscreen).release(0, start).commit();
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        awaitKeyboard();
        QTest::keyClick(scene(), key, modifiers);
    }
    void type(QStringView text)
    {
        awaitKeyboard();
        for (const QChar letter : text)
            QTest::keyClick(scene(), letter.toLatin1());
    }

    /// Waits until the host has the keyboard (again), which a window manager takes its time for.
    void awaitFront() const
    {
        for (int tries = 0; tries < 20 && !QTest::qWaitFor([this] { return isInFront(); }, 500); ++tries)
            window()->requestActivate(); // as a user does who clicks on it
        QVERIFY(isInFront());
    }

    /// Opens the dialog by the public operation, and waits until it stands.
    void openDialog()
    {
        awaitFront();
        Zenvor::shared().present();
        QTRY_VERIFY(isShown("categoryDialog"_L1));
        QTRY_COMPARE(find("categoryDialog"_L1)->parentItem()->opacity(), 1.0);
    }
    /// Opens the form by way of the dialog, and waits until it stands.
    void openForm(QLatin1StringView row)
    {
        openDialog();
        tap(row);
        QTRY_VERIFY(isShown("feedbackSheet"_L1));
        QTRY_COMPARE(find("feedbackSheet"_L1)->mapToScene({}), QPointF());
    }

private:
    // A screen's window counts as the host's; it has the keyboard until it has gone.
    bool isInFront() const
    {
        return keyWindow() && (scene() == window() || QGuiApplication::focusWindow() != scene());
    }
    // A window manager gives the focus a while after a window is shown; keys that come before it are lost.
    void awaitKeyboard() const { QTRY_COMPARE(QGuiApplication::focusWindow(), scene()); }

    static QQuickItem *find(QLatin1StringView name, QQuickItem *item)
    {
        if (item->objectName() == name && item->isVisible())
            return item;
        const auto children = item->childItems();
        for (auto *child : children) {
            if (auto *found = find(name, child))
                return found;
        }
        return nullptr;
    }
};

} // namespace zenvor::test
