#pragma once

#include "platform/view_controller.h"
#include "ui/quick_host_views.h"

#include <memory>

class QQmlEngine;

namespace zenvor {

/// Shows screens in the windows of Qt Quick hosts, in an engine of its own that is made by the first screen
/// and kept to the end of the application. Main thread.
class QuickPresenter final : public Presenter
{
public:
    static QuickPresenter &shared();

    bool canShowOver(const QWindow *host) const override;
    const HostViews &hostViews() const override { return m_hostViews; }
    PresentedScreen *show(std::shared_ptr<ViewController> screen, ModalPresentationStyle style, bool animated,
                          QWindow *host) override;

    /// Loads what every screen needs. To be called before the first item of a window of our own is made: Qt
    /// looks up once how to find the names that assistive tools read, and does not find it before Qt Quick
    /// has been imported.
    void prepare();

private:
    QuickPresenter();
    ~QuickPresenter() override;
    QQmlEngine *engine();

    const QuickHostViews m_hostViews;
    QQmlEngine *m_engine = nullptr; // gone with the application object
};

} // namespace zenvor
