#pragma once

#include "platform/keyboard_observer.h"

#include <functional>

class QWindow;

namespace zenvor {

/// How a screen with fields makes way for an on-screen keyboard and the bar that it puts over it. Main
/// thread.
class KeyboardAvoidance : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qreal bottomInset READ bottomInset NOTIFY changed)
    Q_PROPERTY(qreal overlap READ overlap NOTIFY changed)
    Q_PROPERTY(int duration READ duration NOTIFY changed)
    Q_PROPERTY(qreal accessoryHeight READ accessoryHeight CONSTANT)

public:
    /// \a window gives the window that the screen fills, or null while it is not shown.
    explicit KeyboardAvoidance(std::function<const QWindow *()> window);

    /// How far the end of what is scrolled is kept above the lower edge of the screen.
    qreal bottomInset() const { return m_bottomInset; }
    /// How much of the screen is covered, the bar included.
    qreal overlap() const { return m_overlap; }
    /// Milliseconds that the keyboard takes to get there.
    int duration() const { return m_duration; }
    qreal accessoryHeight() const { return 44; }

    /// \a endFrame, in points of the window, includes the bar.
    void keyboardWillChangeFrame(const QRectF &endFrame, int duration);
    void keyboardWillHide(int duration);

Q_SIGNALS:
    void changed();

private:
    void set(qreal overlap, qreal bottomInset, int duration);
    QRectF withAccessory(QRectF keyboard) const;

    const std::function<const QWindow *()> m_window;
    const KeyboardObserver m_observer;
    qreal m_bottomInset = 0;
    qreal m_overlap = 0;
    int m_duration = 0;
};

} // namespace zenvor
