#include "ui/quick_presenter.h"

#include "capture/window_capture.h"
#include "platform/image.h"
#include "platform/logger.h"
#include "platform/motion_preference.h"
#include "resources/appearance.h"
#include "ui/media_thumbnail_provider.h"

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>

#include <utility>

// Made by the build.
void qml_register_types_Zenvor_Resources();
void qml_register_types_Zenvor_Screens();

// Without a namespace, as the macro wants it.
static void initScreenResources()
{
    Q_INIT_RESOURCE(qmake_Zenvor_Screens); // a linker leaves them out of a static library otherwise
    Q_INIT_RESOURCE(zenvor_ui_raw_qml_0);
}

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr auto folder = "qrc:/qt-project.org/imports/Zenvor/Screens/qml/";

/// One screen in an overlay over the host's scene.
class OverlayScreen final : public PresentedScreen
{
    Q_OBJECT

public:
    OverlayScreen(std::shared_ptr<ViewController> controller, QQuickWindow *host)
        : m_controller(std::move(controller))
        , m_host(host)
        , m_focusBefore(host->activeFocusItem())
    {
    }

    ~OverlayScreen() override
    {
        delete m_overlay; // before the controller, to which its bindings refer
    }

    /// Takes \a overlay, a popup, and opens it with \a view in it.
    void open(QObject *overlay, QQuickItem *view, bool animated)
    {
        m_overlay = overlay;
        m_view = view;
        shown.append(this);
        overlay->setParent(this);
        view->setParent(overlay);
        overlay->setProperty("isAnimated", animated);
        overlay->setProperty("contentItem", QVariant::fromValue(view));
        connect(overlay, SIGNAL(opened()), this, SLOT(appear()));
        connect(overlay, SIGNAL(closed()), this, SLOT(finish()));
        connect(m_host, &QObject::destroyed, this, &OverlayScreen::finish);
        QMetaObject::invokeMethod(overlay, "open");
        // A popup is a dialog without a name: the screen in it is what assistive tools are to see.
        QQmlProperty::write(view->parentItem(), u"Accessible.ignored"_s, true, qmlContext(view));
        view->forceActiveFocus(Qt::PopupFocusReason);
    }

    void dismiss(bool animated, std::function<void()> completion) override
    {
        if (m_isDismissed || m_hasFinished)
            return;
        m_isDismissed = true;
        m_completion = std::move(completion);
        m_overlay->setProperty("isAnimated", animated);
        QMetaObject::invokeMethod(m_overlay, "close"); // closed() comes at once, or after the animation
        if (!m_hasFinished && m_view && !isBelowAnother())
            m_view->forceActiveFocus(Qt::PopupFocusReason); // keys are not the host's while it can be seen
    }

    QWindow *hostWindow() const override { return m_host; }

private Q_SLOTS:
    void appear()
    {
        if (!m_isDismissed && !m_hasFinished)
            m_controller->viewDidAppear();
    }

    void finish()
    {
        if (m_hasFinished)
            return;
        m_hasFinished = true;
        deleteLater(); // the overlay has sent what brought us here
        const bool isCovered = isBelowAnother();
        shown.removeOne(this);
        if (!isCovered)
            giveFocusBack();
        if (shown.isEmpty())
            Appearance::shared().follow(nullptr);
        if (m_isDismissed)
            std::exchange(m_completion, nullptr)();
        else if (m_controller->onHostLost)
            m_controller->onHostLost();
    }

private:
    // As a picker is that goes while an alert is coming.
    bool isBelowAnother() const
    {
        bool isAbove = false;
        for (auto *screen : std::as_const(shown)) {
            if (isAbove && screen->m_host == m_host)
                return true;
            isAbove = isAbove || screen == this;
        }
        return false;
    }

    void giveFocusBack()
    {
        if (!m_host)
            return;
        QQuickItem *item =
            m_focusBefore && m_focusBefore->window() == m_host ? m_focusBefore.data() : nullptr;
        for (auto *screen : std::as_const(shown)) { // there was no focus in a window that was not active
            if (!item && screen->m_host == m_host)
                item = screen->m_view;
        }
        if (item)
            item->forceActiveFocus(Qt::PopupFocusReason);
    }

    static QList<OverlayScreen *> shown; // the lowest first

    const std::shared_ptr<ViewController> m_controller;
    const QPointer<QQuickWindow> m_host;
    const QPointer<QQuickItem> m_focusBefore;
    QPointer<QObject> m_overlay;
    QPointer<QQuickItem> m_view;
    std::function<void()> m_completion;
    bool m_isDismissed = false;
    bool m_hasFinished = false;
};

QList<OverlayScreen *> OverlayScreen::shown;

bool slides(ModalPresentationStyle style)
{
    return style == ModalPresentationStyle::PageSheet || style == ModalPresentationStyle::FullScreen;
}

// Null if the file is in error, which a test would have shown.
std::unique_ptr<QObject> create(QQmlEngine *engine, const QString &name, const QVariantMap &properties)
{
    QQmlComponent component(engine, QUrl(QLatin1StringView(folder) + name + ".qml"_L1));
    std::unique_ptr<QObject> object;
    if (!component.isError()) // creating from it would crash
        object.reset(component.createWithInitialProperties(properties));
    if (!object)
        Logger("com.zenvor.sdk"_L1, "Screens"_L1).error(component.errorString());
    return object;
}

} // namespace

QuickPresenter &QuickPresenter::shared()
{
    static auto *presenter = new QuickPresenter; // never destroyed: static objects may outlive Qt
    return *presenter;
}

QuickPresenter::QuickPresenter() = default;

QuickPresenter::~QuickPresenter() = default;

QQmlEngine *QuickPresenter::engine()
{
    if (!m_engine) {
        initScreenResources();
        for (auto *keepsRegistration :
             {&qml_register_types_Zenvor_Resources, &qml_register_types_Zenvor_Screens}) {
            [[maybe_unused]] auto *volatile kept = keepsRegistration;
        }
        m_engine = new QQmlEngine;
        m_engine->addImageProvider(u"zenvor-media"_s, new MediaThumbnailProvider); // the engine's
        // With the application object, and not later: what the engine stands on goes with that.
        qAddPostRoutine([] { delete std::exchange(shared().m_engine, nullptr); });
    }
    return m_engine;
}

void QuickPresenter::prepare()
{
    const QQmlComponent overlay(engine(), QUrl(QLatin1StringView(folder) + "Overlay.qml"_L1));
}

bool QuickPresenter::canShowOver(const QWindow *host) const
{
    return qobject_cast<const QQuickWindow *>(host);
}

PresentedScreen *QuickPresenter::show(std::shared_ptr<ViewController> screen, ModalPresentationStyle style,
                                      bool animated, QWindow *host)
{
    auto *window = qobject_cast<QQuickWindow *>(host);
    if (!window)
        return nullptr;
    auto *const qmlEngine = engine();
    Appearance::shared().follow(window);

    QVariantMap properties{{u"controller"_s, QVariant::fromValue(screen.get())}};
    if (style == ModalPresentationStyle::OverFullScreen)
        properties.insert(u"backdrop"_s, blurred(captureWindow(window)));
    auto overlay = create(qmlEngine, u"Overlay"_s,
                          {{u"parent"_s, QVariant::fromValue(window->contentItem())},
                           {u"slides"_s, slides(style) && !prefersReducedMotion()}});
    auto view = create(qmlEngine, screen->viewName(), properties);
    auto *viewItem = qobject_cast<QQuickItem *>(view.get());
    if (!overlay || !viewItem)
        return nullptr;

    auto *presented = new OverlayScreen(std::move(screen), window);
    view.release();
    presented->open(overlay.release(), viewItem, animated);
    return presented;
}

} // namespace zenvor

#include "quick_presenter.moc"
