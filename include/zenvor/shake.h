#pragma once

#include <zenvor/zenvor_export.h>

class QString;

namespace zenvor {

/// "com.zenvor.sdk.windowDidShake", posted to NotificationCenter::defaultCenter() after a window was sent
/// a shake and nothing called accept() on it; the notification's object is that window. Posted from the first
/// configuration with shake-to-open on until that application object goes, also after Zenvor::stop().
ZENVOR_EXPORT const QString &zenvorWindowDidShake();

/// For a host that recognises shakes by itself, or has a key or a menu entry for one: sends a shake to the
/// key window, as the accelerometer does. Returns false, and does nothing, if there is no such window and on
/// any other thread than the application object's.
ZENVOR_EXPORT bool sendShake();

} // namespace zenvor
