#pragma once

#include "platform/host_views.h"

namespace zenvor {

/// The views of a Qt Quick host: the scene of its window, a StackView, a SwipeView or a StackLayout that
/// fills most of what it is in, and modal popups. Known by the names of their classes: the library needs no
/// Controls.
class QuickHostViews final : public HostViews
{
public:
    QObject *rootView(QWindow *window) const override;
    Kind kind(const QObject *view) const override;
    QObject *shownView(QObject *container) const override;
    QObject *presentedView(QObject *view) const override;
};

} // namespace zenvor
