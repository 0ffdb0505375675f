#include "platform/host_views.h"

#include <QWindow>

namespace zenvor {

namespace {

// A container is what it is in: a smaller one is a part of a page, as a wizard in a corner is.
bool fillsMostOf(QSizeF outer, QSizeF container)
{
    return 2 * container.width() * container.height() >= outer.width() * outer.height();
}

} // namespace

HostViews::~HostViews() = default;

QObject *HostViews::rootView(QWindow *window) const
{
    auto *const view = windowView(window);
    return view ? containerOrPage(view, window->size()) : nullptr;
}

QObject *HostViews::shownView(QObject *container) const
{
    if (kind(container) == Kind::Navigation) {
        if (auto *modal = presentedView(container))
            return modal;
    }
    auto *const chosen = chosenView(container);
    return chosen ? containerOrPage(chosen, size(chosen)) : nullptr;
}

QObject *HostViews::containerOrPage(QObject *page, QSizeF pageSize) const
{
    constexpr qsizetype mostViews = 5'000; // what is larger is looked at no further

    if (kind(page) != Kind::Page)
        return page;
    QObjectList views{page};
    for (qsizetype i = 0; i < views.size() && views.size() < mostViews; ++i) {
        const auto children = visibleChildren(views[i]);
        for (auto *child : children) {
            if (kind(child) != Kind::Page && fillsMostOf(pageSize, size(child)))
                return child;
            views.append(child);
        }
    }
    return page;
}

} // namespace zenvor
