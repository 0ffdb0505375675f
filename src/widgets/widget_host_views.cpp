#include "widgets/widget_host_views.h"

#include <QApplication>
#include <QStackedWidget>
#include <QTabWidget>
#include <QWindow>

namespace zenvor {

namespace {

HostViews::Kind kindOf(const QObject *view)
{
    if (qobject_cast<const QStackedWidget *>(view))
        return HostViews::Kind::Navigation;
    if (qobject_cast<const QTabWidget *>(view))
        return HostViews::Kind::TabBar;
    return HostViews::Kind::Page;
}

// A container is what it is in: a smaller one is a part of a page.
bool fillsMostOf(const QWidget *outer, const QWidget *container)
{
    return 2 * container->width() * container->height() >= outer->width() * outer->height();
}

// The outermost container in \a page, else the page.
QWidget *containerOrPage(QWidget *page)
{
    if (!page || kindOf(page) != HostViews::Kind::Page)
        return page;
    QList<QWidget *> widgets{page};
    for (qsizetype i = 0; i < widgets.size(); ++i) {
        const auto children = widgets[i]->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        for (auto *child : children) {
            if (child->isWindow() || !child->isVisible())
                continue;
            if (kindOf(child) != HostViews::Kind::Page && fillsMostOf(page, child))
                return child;
            widgets.append(child);
        }
    }
    return page;
}

} // namespace

QWidget *widgetOf(const QWindow *window)
{
    const auto widgets = QApplication::topLevelWidgets();
    for (auto *widget : widgets) {
        if (window && widget->windowHandle() == window)
            return widget;
    }
    return nullptr;
}

QObject *WidgetHostViews::rootView(QWindow *window) const
{
    return containerOrPage(widgetOf(window));
}

HostViews::Kind WidgetHostViews::kind(const QObject *view) const
{
    return kindOf(view);
}

QObject *WidgetHostViews::shownView(QObject *container) const
{
    if (const auto *stack = qobject_cast<QStackedWidget *>(container)) {
        if (auto *modal = presentedView(container))
            return modal;
        return containerOrPage(stack->currentWidget());
    }
    const auto *tabs = qobject_cast<QTabWidget *>(container);
    return tabs ? containerOrPage(tabs->currentWidget()) : nullptr;
}

QObject *WidgetHostViews::presentedView(QObject *view) const
{
    const auto *widget = qobject_cast<QWidget *>(view);
    auto *const modal = QApplication::activeModalWidget();
    return modal && widget && widget->window() != modal ? modal : nullptr;
}

} // namespace zenvor
