#include "platform/keyboard_observer.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QWindow>

#include <utility>

namespace zenvor {

namespace {

constexpr int usualDuration = 250; // Qt does not say how long it takes

// Phones report where the keyboard is in the window, which is the screen there. On desktops it is a window of
// its own, and reports where it is on the screen.
QRectF frameInWindow(QRectF frame)
{
#if !defined(Q_OS_ANDROID) && !defined(Q_OS_IOS)
    if (const auto *window = QGuiApplication::focusWindow())
        frame.translate(-window->position());
#endif
    return frame;
}

} // namespace

KeyboardObserver::KeyboardObserver()
{
    const auto *inputMethod = QGuiApplication::inputMethod();
    connect(inputMethod, &QInputMethod::visibleChanged, this, &KeyboardObserver::update);
    connect(inputMethod, &QInputMethod::keyboardRectangleChanged, this, &KeyboardObserver::update);
}

void KeyboardObserver::update()
{
    const auto *inputMethod = QGuiApplication::inputMethod();
    const bool wasVisible = std::exchange(m_isVisible, inputMethod->isVisible());
    if (m_isVisible)
        Q_EMIT keyboardWillChangeFrame(frameInWindow(inputMethod->keyboardRectangle()), usualDuration);
    else if (wasVisible) // the frame stays as it was
        Q_EMIT keyboardWillHide(usualDuration);
}

} // namespace zenvor
