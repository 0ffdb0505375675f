#include "platform/window.h"

#include <QColor>
#include <QGuiApplication>
#include <QVariant>
#include <QWindow>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr auto styleProperty = "zenvorInterfaceStyle";
constexpr auto safeAreaProperty = "zenvorSafeAreaMargins";
constexpr auto ownWindowProperty = "_zenvorOwnWindow";

WidgetWindows ofWidgets;

bool isAccessory(const QWindow *window)
{
    switch (window->type()) {
    case Qt::Popup:
    case Qt::ToolTip:
    case Qt::SplashScreen:
        return true;
    default:
        return false;
    }
}

bool isOwnWindow(const QWindow *window)
{
    return window->property(ownWindowProperty).toBool();
}

// Null if the way up ends at a window that cannot stand for the host, or does not end: two windows can be
// transient for each other.
QWindow *hostWindowOf(QWindow *window)
{
    constexpr int farAboveAnyHost = 100;

    for (int height = 0; window && height < farAboveAnyHost; ++height) {
        if (QWindow *parent = window->parent())
            window = parent;
        else if (isAccessory(window) || isOwnWindow(window))
            window = window->transientParent();
        else
            return window;
    }
    return nullptr;
}

std::optional<InterfaceStyle> styleFromProperty(const QWindow *window)
{
    const QString style = window->property(styleProperty).toString();
    if (style == "light"_L1)
        return InterfaceStyle::Light;
    if (style == "dark"_L1)
        return InterfaceStyle::Dark;
    return std::nullopt;
}

// Some Quick styles never change the palette when they turn dark: their window's colour is what tells.
// Qt Quick is not linked here, hence the class by its name.
std::optional<InterfaceStyle> styleFromColor(const QWindow *window)
{
    if (!window->inherits("QQuickApplicationWindow"))
        return std::nullopt;
    const auto color = window->property("color").value<QColor>();
    if (!color.isValid() || color.alpha() < 128)
        return std::nullopt; // what is seen is not this colour
    return qGray(color.rgb()) < 128 ? InterfaceStyle::Dark : InterfaceStyle::Light;
}

InterfaceStyle styleFromPalette(const QPalette &palette)
{
    const auto brightness = [&palette](QPalette::ColorRole role) {
        return qGray(palette.color(QPalette::Active, role).rgb());
    };
    return brightness(QPalette::WindowText) > brightness(QPalette::Window) ? InterfaceStyle::Dark
                                                                           : InterfaceStyle::Light;
}

} // namespace

QWindow *keyWindow()
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance())
        || QGuiApplication::applicationState() != Qt::ApplicationActive)
        return nullptr;

    QWindow *window = ofWidgets.activeWindow ? ofWidgets.activeWindow() : nullptr;
    window = hostWindowOf(window ? window : QGuiApplication::focusWindow());
    if (!window || !window->isVisible() || window->windowStates().testFlag(Qt::WindowMinimized))
        return nullptr;
    return window;
}

InterfaceStyle interfaceStyle(const QWindow *window)
{
    if (window && isOwnWindow(window))
        window = window->transientParent(); // it stands for the host's
    if (!window)
        return InterfaceStyle::Unspecified;
    if (const auto style = styleFromProperty(window))
        return *style;
    if (const auto style = styleFromColor(window))
        return *style;
    const auto palette = ofWidgets.palette ? ofWidgets.palette(window) : std::nullopt;
    return styleFromPalette(palette.value_or(QGuiApplication::palette()));
}

QMarginsF safeAreaMargins(const QWindow *window)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 9, 0)
    return window->safeAreaMargins();
#else
    const auto *host = isOwnWindow(window) ? window->transientParent() : window;
    return host ? host->property(safeAreaProperty).value<QMarginsF>() : QMarginsF();
#endif
}

void markAsOwnWindow(QWindow *window)
{
    window->setProperty(ownWindowProperty, true);
}

void setWidgetWindows(WidgetWindows windows)
{
    ofWidgets = windows;
}

const WidgetWindows &widgetWindows()
{
    return ofWidgets;
}

bool isWidgetWindow(const QWindow *window)
{
    return window && window->inherits("QWidgetWindow");
}

} // namespace zenvor
