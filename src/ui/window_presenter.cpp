#include "ui/window_presenter.h"

#include "platform/window.h"
#include "ui/quick_presenter.h"
#include "ui/stage.h"

#include <QQuickWindow>

namespace zenvor {

WindowPresenter &WindowPresenter::shared()
{
    static auto *presenter = new WindowPresenter; // never destroyed: static objects may outlive Qt
    return *presenter;
}

bool WindowPresenter::canShowOver(const QWindow *host) const
{
    return isWidgetWindow(host) && widgetWindows().views;
}

const HostViews &WindowPresenter::hostViews() const
{
    return *widgetWindows().views;
}

PresentedScreen *WindowPresenter::show(std::shared_ptr<ViewController> screen, ModalPresentationStyle style,
                                       bool animated, QWindow *host)
{
    auto *const stage = stageFor(host);
    auto *const presented =
        QuickPresenter::shared().show(std::move(screen), style, animated, stage->window());
    if (presented)
        stage->keepFor(presented);
    else
        stage->closeIfEmpty();
    return presented;
}

Stage *WindowPresenter::stageFor(QWindow *host)
{
    if (m_stage && m_stage->isFor(host))
        return m_stage;
    if (widgetWindows().closePopups)
        widgetWindows().closePopups();
    QuickPresenter::shared().prepare();
    m_stage = new Stage(host); // deletes itself
    return m_stage;
}

} // namespace zenvor
