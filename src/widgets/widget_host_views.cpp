#include "widgets/widget_host_views.h"

#include <QApplication>
#include <QStackedWidget>
#include <QTabWidget>
#include <QWindow>

namespace zenvor {

QWidget *widgetOf(const QWindow *window)
{
    const auto widgets = QApplication::topLevelWidgets();
    for (auto *widget : widgets) {
        if (window && widget->windowHandle() == window)
            return widget;
    }
    return nullptr;
}

HostViews::Kind WidgetHostViews::kind(const QObject *view) const
{
    if (qobject_cast<const QStackedWidget *>(view))
        return Kind::Navigation;
    if (qobject_cast<const QTabWidget *>(view))
        return Kind::TabBar;
    return Kind::Page;
}

QObject *WidgetHostViews::presentedView(QObject *view) const
{
    const auto *widget = qobject_cast<QWidget *>(view);
    auto *const modal = QApplication::activeModalWidget();
    return modal && widget && widget->window() != modal ? modal : nullptr;
}

QObject *WidgetHostViews::windowView(QWindow *window) const
{
    return widgetOf(window);
}

QObject *WidgetHostViews::chosenView(QObject *container) const
{
    if (const auto *stack = qobject_cast<QStackedWidget *>(container))
        return stack->currentWidget();
    const auto *tabs = qobject_cast<QTabWidget *>(container);
    return tabs ? tabs->currentWidget() : nullptr;
}

QObjectList WidgetHostViews::visibleChildren(const QObject *view) const
{
    QObjectList visible;
    const auto children = view->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (auto *child : children) {
        if (!child->isWindow() && child->isVisible())
            visible.append(child);
    }
    return visible;
}

QSizeF WidgetHostViews::size(const QObject *view) const
{
    return qobject_cast<const QWidget *>(view)->size();
}

} // namespace zenvor
