#pragma once

#include <QObject>
#include <QRectF>

namespace zenvor {

/// Tells of the on-screen keyboard while it exists, as the input method of the application reports it. A
/// keyboard of keys is none. Main thread, with an application object that has windows.
class KeyboardObserver : public QObject
{
    Q_OBJECT

public:
    KeyboardObserver();

Q_SIGNALS:
    /// It comes, or changes its place. \a endFrame in points of the window that has the keyboard; it gets
    /// there in \a duration milliseconds.
    void keyboardWillChangeFrame(const QRectF &endFrame, int duration);
    void keyboardWillHide(int duration);

private:
    void update();

    bool m_isVisible = false;
};

} // namespace zenvor
