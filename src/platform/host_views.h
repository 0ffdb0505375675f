#pragma once

class QObject;
class QWindow;

namespace zenvor {

/// What a host shows, as the search for its top-most view sees it: pages, the containers that they are in,
/// and what lies modally over them. Views are objects of the host's, known by their kind alone. Main thread.
class HostViews
{
public:
    enum class Kind {
        Page,
        Navigation, ///< shows the last of a stack of views
        TabBar, ///< shows one of several views
    };

    virtual ~HostViews() = default;

    /// The view that fills \a window; null if there is none.
    virtual QObject *rootView(QWindow *window) const = 0;
    virtual Kind kind(const QObject *view) const = 0;
    /// What a navigation container shows, which may be modal, or the selected view of a tab container. Null
    /// for an empty one.
    virtual QObject *shownView(QObject *container) const = 0;
    /// What lies modally over \a view; null if nothing does.
    virtual QObject *presentedView(QObject *view) const = 0;
};

} // namespace zenvor
