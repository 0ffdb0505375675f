#include "ui/presenters.h"

#include "ui/quick_presenter.h"
#include "ui/window_presenter.h"

namespace zenvor {

Presenter *presenterFor(const QWindow *host)
{
    for (Presenter *presenter : {static_cast<Presenter *>(&QuickPresenter::shared()),
                                 static_cast<Presenter *>(&WindowPresenter::shared())}) {
        if (presenter->canShowOver(host))
            return presenter;
    }
    return nullptr;
}

} // namespace zenvor
