#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QWindow;

namespace zenvor {

class HostViews;
class ViewController;

enum class ModalPresentationStyle {
    OverFullScreen, ///< over all of the host's window, which shows through
    PageSheet, ///< slides up from below, and leaves a strip of the host's window
    FullScreen, ///< covers all of the host's window
    Alert, ///< a small card over whatever is there
};

/// A screen that is being shown, as its presenter keeps it.
class PresentedScreen : public QObject
{
public:
    /// Takes it off the screen, then calls \a completion, once.
    virtual void dismiss(bool animated, std::function<void()> completion) = 0;
    virtual QWindow *hostWindow() const = 0;
};

/// What shows screens in a host's windows.
class Presenter
{
public:
    virtual ~Presenter();

    /// Whether it knows how to show something over \a host.
    virtual bool canShowOver(const QWindow *host) const = 0;

    /// What sees the views of such hosts.
    virtual const HostViews &hostViews() const = 0;

    /// Shows \a screen over \a host and keeps it until it is gone. Null, with nothing shown, if that cannot
    /// be.
    virtual PresentedScreen *show(std::shared_ptr<ViewController> screen, ModalPresentationStyle style,
                                  bool animated, QWindow *host) = 0;
};

/// A screen of the library: what it holds and decides. What it looks like is a view that binds to its
/// properties and calls its slots. Made by std::make_shared; while it is shown, its presenter keeps it. Main
/// thread.
class ViewController : public QObject, public std::enable_shared_from_this<ViewController>
{
    Q_OBJECT

public:
    /// Called when the host's window is gone, and this screen with it.
    std::function<void()> onHostLost;

    /// The name of the view.
    virtual QString viewName() const = 0;

    /// Shows this screen over \a host. False if that cannot be; nothing has been called then.
    bool present(Presenter &presenter, ModalPresentationStyle style, bool animated, QWindow *host);

    /// Called when its presentation has completed: it stands where it stays.
    virtual void viewDidAppear() {}

    /// Takes this screen away, and calls \a completion when it is gone if this object then still exists.
    /// Nothing if it is not shown, or going already.
    void dismiss(bool animated, std::function<void()> completion);

    /// The user wants to leave: by Esc, by Back, or by the window manager.
    Q_INVOKABLE virtual void leave() = 0;

protected:
    /// Shows \a screen over this one, animated. Nothing once this one is gone or going.
    void presentOver(const std::shared_ptr<ViewController> &screen, ModalPresentationStyle style);

    /// Whether a screen is shown over this one by presentOver().
    bool isCovered() const;

    /// The host's window that this is shown over; null before and after.
    QWindow *hostWindow() const { return m_screen ? m_screen->hostWindow() : nullptr; }

private:
    Presenter *m_presenter = nullptr;
    QPointer<PresentedScreen> m_screen; // until it is dismissed
    std::weak_ptr<ViewController> m_above;
};

} // namespace zenvor
