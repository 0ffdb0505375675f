#include "resources/appearance.h"

#include "platform/window.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

namespace zenvor {

Appearance &Appearance::shared()
{
    static auto *appearance = new Appearance; // never destroyed: views may ask to the end
    return *appearance;
}

Appearance *Appearance::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void Appearance::follow(QWindow *window)
{
    if (m_window) {
        m_window->removeEventFilter(this);
        m_window->disconnect(this);
    }
    m_window = window;
    if (!window)
        return;
    // The application tells of its palette by an event that reaches each window.
    window->installEventFilter(this);
    if (auto *quickWindow = qobject_cast<QQuickWindow *>(window))
        connect(quickWindow, &QQuickWindow::colorChanged, this, &Appearance::update);
    connect(window, &QWindow::screenChanged, this, &Appearance::update);
#if QT_VERSION >= QT_VERSION_CHECK(6, 9, 0)
    connect(window, &QWindow::safeAreaMarginsChanged, this, &Appearance::update);
#endif
    update();
}

bool Appearance::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ApplicationPaletteChange:
    case QEvent::PaletteChange:
    case QEvent::ThemeChange:
    case QEvent::DynamicPropertyChange:
        QMetaObject::invokeMethod(this, &Appearance::update, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void Appearance::update()
{
    if (!m_window)
        return;
    m_isDark = interfaceStyle(m_window) == InterfaceStyle::Dark;
    m_devicePixelRatio = m_window->devicePixelRatio();
    m_safeArea = safeAreaMargins(m_window);
    Q_EMIT changed();
}

} // namespace zenvor
