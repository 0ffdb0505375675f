#include "ui/quick_host_views.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace zenvor {

namespace {

constexpr auto overlayClass = "QQuickOverlay";
constexpr auto popupClass = "QQuickPopup";

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

} // namespace

HostViews::Kind QuickHostViews::kind(const QObject *view) const
{
    if (view->inherits("QQuickStackView"))
        return Kind::Navigation;
    if (view->inherits("QQuickSwipeView") || view->inherits("QQuickStackLayout"))
        return Kind::TabBar;
    return Kind::Page;
}

QObject *QuickHostViews::presentedView(QObject *view) const
{
    const auto *item = qobject_cast<QQuickItem *>(view);
    return item ? topModalPopup(item->window()) : nullptr; // over a popup there is none: it is the top-most
}

QObject *QuickHostViews::windowView(QWindow *window) const
{
    const auto *quickWindow = qobject_cast<QQuickWindow *>(window);
    return quickWindow ? quickWindow->contentItem() : nullptr;
}

QObject *QuickHostViews::chosenView(QObject *container) const
{
    if (!container->inherits("QQuickStackLayout"))
        return container->property("currentItem").value<QQuickItem *>();
    QQuickItem *item = nullptr;
    QMetaObject::invokeMethod(container, "itemAt", Q_RETURN_ARG(QQuickItem *, item),
                              Q_ARG(int, container->property("currentIndex").toInt()));
    return item;
}

QObjectList QuickHostViews::visibleChildren(const QObject *view) const
{
    QObjectList visible;
    const auto children = qobject_cast<const QQuickItem *>(view)->childItems();
    for (auto *child : children) {
        if (child->isVisible() && !child->inherits(overlayClass))
            visible.append(child);
    }
    return visible;
}

QSizeF QuickHostViews::size(const QObject *view) const
{
    return qobject_cast<const QQuickItem *>(view)->size();
}

} // namespace zenvor
