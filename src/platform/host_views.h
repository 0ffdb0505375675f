#pragma once

#include <zenvor/zenvor_export.h>

#include <QObject>
#include <QSizeF>

class QWindow;

namespace zenvor {

/// What a host shows, as the search for its top-most view sees it: pages, the containers that they are in,
/// and what lies modally over them. Views are objects of the host's, known by their kind alone. Main thread.
class ZENVOR_EXPORT HostViews // also for the component Widgets, which is a library of its own
{
public:
    enum class Kind {
        Page,
        Navigation, ///< shows the last of a stack of views
        TabBar, ///< shows one of several views
    };

    virtual ~HostViews();

    /// What fills \a window: the outermost container in it that takes up most of it, else all that it shows.
    /// Null if there is nothing.
    QObject *rootView(QWindow *window) const;
    /// What a navigation container shows, which may be modal, or the selected view of a tab container, with
    /// the container in it in its place if there is one. Null for an empty one.
    QObject *shownView(QObject *container) const;

    virtual Kind kind(const QObject *view) const = 0;
    /// What lies modally over \a view; null if nothing does.
    virtual QObject *presentedView(QObject *view) const = 0;

protected:
    /// All that \a window shows; null if it is not of this kind of host.
    virtual QObject *windowView(QWindow *window) const = 0;
    /// The view that a container has chosen.
    virtual QObject *chosenView(QObject *container) const = 0;
    /// What can be seen directly within \a view.
    virtual QObjectList visibleChildren(const QObject *view) const = 0;
    virtual QSizeF size(const QObject *view) const = 0;

private:
    QObject *containerOrPage(QObject *page, QSizeF size) const;
};

} // namespace zenvor
