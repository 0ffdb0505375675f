#pragma once

#include "platform/host_views.h"

class QWidget;

namespace zenvor {

/// The top-level widget that \a window is of, or null.
QWidget *widgetOf(const QWindow *window);

/// The views of a Qt Widgets host: its top-level widget, a QStackedWidget or a QTabWidget that fills most of
/// what it is in, and a modal dialog.
class WidgetHostViews final : public HostViews
{
public:
    Kind kind(const QObject *view) const override;
    QObject *presentedView(QObject *view) const override;

protected:
    QObject *windowView(QWindow *window) const override;
    QObject *chosenView(QObject *container) const override;
    QObjectList visibleChildren(const QObject *view) const override;
    QSizeF size(const QObject *view) const override;
};

} // namespace zenvor
