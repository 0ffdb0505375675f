#pragma once

#include <QImage>
#include <QWindow>

namespace driver {

class Screens;

/// The app that is led through the flow. This is all that differs from one host to the next.
class ExampleHost
{
public:
    virtual ~ExampleHost() = default;

    /// The one that the user is in.
    virtual QWindow *window() const = 0;
    /// What that window shows, in pixels of the screen.
    virtual QImage picture() const = 0;
    /// As a user does it. Returns when the host shows itself dark.
    virtual void turnDark(Screens &screens) = 0;
    /// Opens a modal dialog that is a window of its own, after turnDark(), and returns true; false without
    /// one.
    virtual bool openDialog(Screens &screens)
    {
        Q_UNUSED(screens)
        return false;
    }
};

} // namespace driver
