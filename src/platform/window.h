#pragma once

#include <zenvor/zenvor_export.h>

#include <QImage>
#include <QMarginsF>
#include <QPalette>

#include <optional>

class QWindow;

namespace zenvor {

class HostViews;

enum class InterfaceStyle {
    Unspecified,
    Light,
    Dark,
};

/// The window of the host that the user is working in, never one of the library's own and never a menu
/// or tool tip: those stand for the window they belong to. Null while the application is not active,
/// while that window is hidden or minimised, and without a graphical application. Main thread.
QWindow *keyWindow();

/// Whether \a window shows itself light or dark: what the host says in the window's dynamic property
/// "zenvorInterfaceStyle" ("light" or "dark"), else what its colours show. Unspecified for a null
/// window. Main thread.
InterfaceStyle interfaceStyle(const QWindow *window);

/// How far from the edges of \a window nothing can be seen or touched that matters: behind a notch, rounded
/// corners or the system's bars. In points. From Qt 6.9 on the system's, before it what the host says in the
/// window's dynamic property "zenvorSafeAreaMargins" (a QMarginsF), else none. Main thread.
QMarginsF safeAreaMargins(const QWindow *window);

/// Makes keyWindow() give the window that \a window is transient for in its stead. To be called for
/// each top-level window that the library shows itself.
void markAsOwnWindow(QWindow *window);

/// What only Qt Widgets knows of windows, for hosts that use it: this library does not link it.
struct WidgetWindows
{
    /// The window of the active widget, or null. It stays the main window while a menu has the focus.
    QWindow *(*activeWindow)() = nullptr;

    /// The palette of the top-level widget that \a window belongs to, or nothing if it is none.
    std::optional<QPalette> (*palette)(const QWindow *window) = nullptr;

    /// What \a window shows, at the pixel density of its screen. Blank if it is no widget's.
    QImage (*picture)(QWindow *window) = nullptr;

    /// Closes the menus and lists that are open: they would stay above everything else.
    void (*closePopups)() = nullptr;

    /// What such hosts show.
    const HostViews *views = nullptr;
};

/// Takes effect from now on; a default WidgetWindows undoes it. Main thread.
ZENVOR_EXPORT void setWidgetWindows(WidgetWindows windows);

const WidgetWindows &widgetWindows();

/// Whether \a window is that of a widget.
bool isWidgetWindow(const QWindow *window);

} // namespace zenvor
