#include "ui/stage.h"

#include "capture/window_capture.h"
#include "platform/window.h"
#include "resources/picture_item.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace zenvor {

namespace {

// A window whose scene finds no OpenGL ends the process. Once there are such windows it is too late to
// choose, and not needed: they have found it.
void chooseRenderer()
{
    static bool isChosen = false;
    if (std::exchange(isChosen, true) || QQuickWindow::graphicsApi() != QSGRendererInterface::OpenGL)
        return;
    QOpenGLContext context;
    if (!context.create())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

std::unique_ptr<QQuickWindow> makeWindow(QWindow *host)
{
    chooseRenderer();
    auto window = std::make_unique<QQuickWindow>();
    window->setFlags(Qt::Dialog | Qt::FramelessWindowHint);
    window->setModality(Qt::ApplicationModal);
    window->setTransientParent(host);
    window->setTitle(host->title());
    markAsOwnWindow(window.get());
    return window;
}

// A dialog may be far smaller than what it lies over.
QWindow *largestBelow(QWindow *window)
{
    auto *largest = window;
    for (auto *below = window->transientParent(); below; below = below->transientParent()) {
        const auto area = [](const QWindow *each) {
            return each->width() * each->height();
        };
        if (below->isVisible() && area(below) > area(largest))
            largest = below;
    }
    return largest;
}

} // namespace

Stage::Stage(QWindow *host)
    : m_host(host)
    , m_ground(largestBelow(host))
    , m_window(makeWindow(host))
    , m_picture(new PictureItem(m_window->contentItem()))
{
    takePicture();
    followHost();
    host->installEventFilter(this);
    m_ground->installEventFilter(this);
    m_window->installEventFilter(this);
    connect(host, &QObject::destroyed, this, &QObject::deleteLater);
    // The flow ends, and the host goes on.
    connect(m_window.get(), &QQuickWindow::sceneGraphError, this, &QObject::deleteLater);
    m_window->show();
    m_window->requestActivate();
}

Stage::~Stage()
{
    m_window->removeEventFilter(this);
    m_window->hide();
    if (m_host && m_host->isVisible())
        m_host->requestActivate(); // not every system gives it back
}

bool Stage::isFor(const QWindow *window) const
{
    return window && (window == m_host || window == m_window.get());
}

void Stage::keepFor(QObject *screen)
{
    ++m_screens;
    connect(screen, &QObject::destroyed, this, [this] {
        --m_screens;
        closeIfEmpty();
    });
}

void Stage::closeIfEmpty()
{
    if (m_screens == 0)
        deleteLater();
}

void Stage::takePicture()
{
    if (!m_ground)
        return;
    QImage picture = captureWindow(m_ground);
    if (m_host && m_host != m_ground) {
        QPainter painter(&picture);
        painter.drawImage(m_host->position() - m_ground->position(), captureWindow(m_host));
    }
    m_picture->setImage(picture);
}

void Stage::followHost()
{
    if (!m_ground)
        return;
    m_window->setGeometry(m_ground->geometry());
    m_window->contentItem()->setSize(m_ground->size()); // before it is shown as well
    m_picture->setSize(m_ground->size());
}

void Stage::showOrHide()
{
    if (!m_host)
        return;
    // A minimised one takes along what is transient for it, by the window manager.
    if (m_host->isVisible() == m_window->isVisible())
        return;
    m_window->setVisible(m_host->isVisible());
    if (m_host->isVisible())
        m_window->requestActivate();
}

bool Stage::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window.get()) {
        if (event->type() != QEvent::Close)
            return false;
        // The window manager's way to leave is the user's.
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(watched, &escape);
        event->ignore();
        return true;
    }
    switch (event->type()) {
    case QEvent::DynamicPropertyChange:
    case QEvent::PaletteChange:
    case QEvent::ThemeChange: {
        QEvent change(QEvent::ThemeChange); // what the screens look like depends on the host's window
        QCoreApplication::sendEvent(m_window.get(), &change);
        break;
    }
    case QEvent::Move:
        followHost();
        break;
    case QEvent::Resize:
        followHost();
        QMetaObject::invokeMethod(this, &Stage::takePicture, Qt::QueuedConnection); // when it is laid out
        break;
    case QEvent::Show:
    case QEvent::Hide:
        QMetaObject::invokeMethod(this, &Stage::showOrHide, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return false;
}

} // namespace zenvor
