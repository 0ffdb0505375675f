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
    QObject *rootView(QWindow *window) const override;
    Kind kind(const QObject *view) const override;
    QObject *shownView(QObject *container) const override;
    QObject *presentedView(QObject *view) const override;
};

} // namespace zenvor
