#include "ui/keyboard_avoidance.h"

#include "platform/window.h"

#include <QWindow>

#include <algorithm>

namespace zenvor {

namespace {

constexpr qreal room = 12; // between the keyboard and what is above it

} // namespace

KeyboardAvoidance::KeyboardAvoidance(std::function<const QWindow *()> window) : m_window(std::move(window))
{
    connect(&m_observer, &KeyboardObserver::keyboardWillChangeFrame, this,
            [this](const QRectF &endFrame, int duration) {
                keyboardWillChangeFrame(withAccessory(endFrame), duration);
            });
    connect(&m_observer, &KeyboardObserver::keyboardWillHide, this, &KeyboardAvoidance::keyboardWillHide);
}

// One that does not reach the screen gets no bar.
QRectF KeyboardAvoidance::withAccessory(QRectF keyboard) const
{
    const auto *window = m_window();
    if (window && !keyboard.isEmpty() && keyboard.top() < window->height())
        keyboard.setTop(keyboard.top() - accessoryHeight());
    return keyboard;
}

void KeyboardAvoidance::keyboardWillChangeFrame(const QRectF &endFrame, int duration)
{
    const auto *window = m_window();
    if (!window)
        return;
    const qreal overlap = endFrame.isEmpty() ? 0 : std::max(0.0, window->height() - endFrame.top());
    set(overlap, std::max(0.0, overlap - safeAreaMargins(window).bottom()) + room, duration);
}

void KeyboardAvoidance::keyboardWillHide(int duration)
{
    set(0, 0, duration);
}

void KeyboardAvoidance::set(qreal overlap, qreal bottomInset, int duration)
{
    m_overlap = overlap;
    m_bottomInset = bottomInset;
    m_duration = duration;
    Q_EMIT changed();
}

} // namespace zenvor
