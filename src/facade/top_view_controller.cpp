#include "facade/top_view_controller.h"

#include "platform/host_views.h"

namespace zenvor {

QObject *topViewController(const HostViews &views, QObject *base)
{
    if (!base)
        return nullptr;
    switch (views.kind(base)) {
    case HostViews::Kind::Navigation:
        return topViewController(views, views.shownView(base));
    case HostViews::Kind::TabBar:
        if (auto *selected = views.shownView(base))
            return topViewController(views, selected);
        break;
    case HostViews::Kind::Page:
        break;
    }
    auto *presented = views.presentedView(base);
    return presented ? topViewController(views, presented) : base;
}

} // namespace zenvor
