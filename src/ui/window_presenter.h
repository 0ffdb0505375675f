#pragma once

#include "platform/view_controller.h"

namespace zenvor {

class Stage;

/// Shows screens over the windows of Qt Widgets hosts, on a stage. Main thread.
class WindowPresenter final : public Presenter
{
public:
    static WindowPresenter &shared();

    bool canShowOver(const QWindow *host) const override;
    const HostViews &hostViews() const override;
    PresentedScreen *show(std::shared_ptr<ViewController> screen, ModalPresentationStyle style, bool animated,
                          QWindow *host) override;

private:
    /// The one that stands over \a host, or is \a host; a new one if there is none.
    Stage *stageFor(QWindow *host);

    QPointer<Stage> m_stage; // the last one
};

} // namespace zenvor
