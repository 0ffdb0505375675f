#pragma once

class QObject;

namespace zenvor {

class HostViews;

/// The view of the host that a screen lies over: from \a base, into containers and over what is modal. Null
/// if that leads to an empty navigation container or if there is no \a base: to begin anew at the window
/// would lead there again.
QObject *topViewController(const HostViews &views, QObject *base);

} // namespace zenvor
