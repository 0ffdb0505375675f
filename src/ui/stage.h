#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <memory>

class QQuickWindow;

namespace zenvor {

class PictureItem;

/// A window of the library's own over one of a host's whose scene nothing can be put into, with a picture of
/// it: screens lie over that picture as if it were the host. Over a small dialog it covers the window below.
/// It follows the host's window, keeps the user from it, and gives the focus back. Deletes itself when the
/// last screen is gone, and when the host's window goes. Main thread.
class Stage : public QObject
{
    Q_OBJECT

public:
    explicit Stage(QWindow *host);
    ~Stage() override;

    /// Whether \a window is what it stands over, or itself.
    bool isFor(const QWindow *window) const;
    QQuickWindow *window() const { return m_window.get(); }

    /// Stays at least until \a screen is destroyed.
    void keepFor(QObject *screen);
    /// Goes, unless there is a screen.
    void closeIfEmpty();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void followHost();
    void showOrHide();
    void takePicture();

    const QPointer<QWindow> m_host;
    const QPointer<QWindow>
        m_ground; // what it covers: the host's, or a larger one that a dialog of the host lies over
    const std::unique_ptr<QQuickWindow> m_window;
    PictureItem *const m_picture; // the window's
    int m_screens = 0;
};

} // namespace zenvor
