#include "platform/view_controller.h"

namespace zenvor {

Presenter::~Presenter() = default;

bool ViewController::present(Presenter &presenter, ModalPresentationStyle style, bool animated, QWindow *host)
{
    m_screen = presenter.show(shared_from_this(), style, animated, host);
    return m_screen;
}

void ViewController::dismiss(bool animated, std::function<void()> completion)
{
    if (!m_screen)
        return;
    m_screen->dismiss(animated, [self = weak_from_this(), completion = std::move(completion)] {
        if (const auto alive = self.lock(); alive && completion)
            completion();
    });
}

QWindow *ViewController::hostWindow() const
{
    return m_screen ? m_screen->hostWindow() : nullptr;
}

} // namespace zenvor
