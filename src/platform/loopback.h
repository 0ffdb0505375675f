#pragma once

class QString;

namespace zenvor {

/// Whether \a host, as QUrl gives it, is this machine by its name or its literal address. Nothing is
/// looked up.
bool isLoopbackHost(const QString &host);

} // namespace zenvor
