#pragma once

#include "platform/host_views.h"

namespace zenvor {

/// The views of a Qt Quick host: the scene of its window, a StackView, a SwipeView or a StackLayout, and
/// modal popups. Known by the names of their classes: the library needs no Controls.
class QuickHostViews final : public HostViews
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
