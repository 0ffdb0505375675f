#include "platform/view_controller.h"

namespace zenvor {

Presenter::~Presenter() = default;

bool ViewController::present(Presenter &presenter, ModalPresentationStyle style, bool animated, QWindow *host)
{
    m_presenter = &presenter;
    m_screen = presenter.show(shared_from_this(), style, animated, host);
    return m_screen;
}

void ViewController::presentOver(const std::shared_ptr<ViewController> &screen, ModalPresentationStyle style)
{
    if (m_screen && screen->present(*m_presenter, style, true, m_screen->hostWindow()))
        m_above = screen;
}

bool ViewController::isCovered() const
{
    const auto above = m_above.lock();
    return above && above->m_screen;
}

void ViewController::dismiss(bool animated, std::function<void()> completion)
{
    if (!m_screen)
        return;
    auto *const screen = m_screen.data();
    m_screen.clear();
    screen->dismiss(animated, [self = weak_from_this(), completion = std::move(completion)] {
        if (const auto alive = self.lock(); alive && completion)
            completion();
    });
}

} // namespace zenvor
