#include "ui/quick_host_views.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace zenvor {

namespace {

constexpr auto overlayClass = "QQuickOverlay";
constexpr auto popupClass = "QQuickPopup";

HostViews::Kind kindOf(const QObject *view)
{
    if (view->inherits("QQuickStackView"))
        return HostViews::Kind::Navigation;
    if (view->inherits("QQuickSwipeView") || view->inherits("QQuickStackLayout"))
        return HostViews::Kind::TabBar;
    return HostViews::Kind::Page;
}

// A container is what it is in: a smaller one is a part of a page, as a wizard in a corner is.
bool fillsMostOf(QSizeF outer, const QQuickItem *container)
{
    return 2 * container->width() * container->height() >= outer.width() * outer.height();
}

// The outermost container in \a page, which has that \a size, else the page.
QQuickItem *containerOrPage(QQuickItem *page, QSizeF size)
{
    constexpr qsizetype mostItems = 5'000; // a scene that is larger is looked at no further

    if (kindOf(page) != HostViews::Kind::Page)
        return page;
    QList<QQuickItem *> items{page};
    for (qsizetype i = 0; i < items.size() && items.size() < mostItems; ++i) {
        const auto children = items[i]->childItems();
        for (auto *child : children) {
            if (!child->isVisible() || child->inherits(overlayClass))
                continue;
            if (kindOf(child) != HostViews::Kind::Page && fillsMostOf(size, child))
                return child;
            items.append(child);
        }
    }
    return page;
}

// The modal popup above all others in \a window, or null.
QObject *topModalPopup(const QQuickWindow *window)
{
    if (!window)
        return nullptr;
    QObject *top = nullptr;
    qreal highest = 0;
    const auto layers = window->contentItem()->childItems();
    for (const auto *overlay : layers) {
        if (!overlay->inherits(overlayClass))
            continue;
        const auto shown = overlay->childItems();
        for (const auto *item : shown) {
            auto *popup = item->parent();
            if (!popup || !popup->inherits(popupClass) || !popup->property("modal").toBool()
                || !item->isVisible())
                continue;
            if (!top || item->z() >= highest) {
                top = popup;
                highest = item->z();
            }
        }
    }
    return top;
}

QQuickItem *selectedItem(QObject *container)
{
    if (!container->inherits("QQuickStackLayout"))
        return container->property("currentItem").value<QQuickItem *>();
    QQuickItem *item = nullptr;
    QMetaObject::invokeMethod(container, "itemAt", Q_RETURN_ARG(QQuickItem *, item),
                              Q_ARG(int, container->property("currentIndex").toInt()));
    return item;
}

} // namespace

QObject *QuickHostViews::rootView(QWindow *window) const
{
    auto *quickWindow = qobject_cast<QQuickWindow *>(window);
    return quickWindow ? containerOrPage(quickWindow->contentItem(), quickWindow->size()) : nullptr;
}

HostViews::Kind QuickHostViews::kind(const QObject *view) const
{
    return kindOf(view);
}

QObject *QuickHostViews::shownView(QObject *container) const
{
    if (kindOf(container) == Kind::Navigation) {
        if (auto *modal = presentedView(container))
            return modal;
    }
    auto *const selected = selectedItem(container);
    return selected ? containerOrPage(selected, selected->size()) : nullptr;
}

QObject *QuickHostViews::presentedView(QObject *view) const
{
    const auto *item = qobject_cast<QQuickItem *>(view);
    return item ? topModalPopup(item->window()) : nullptr; // over a popup there is none: it is the top-most
}

} // namespace zenvor
