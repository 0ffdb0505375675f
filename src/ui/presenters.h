#pragma once

class QWindow;

namespace zenvor {

class Presenter;

/// What can show screens over \a host; null if nothing can, and for no window. Main thread.
Presenter *presenterFor(const QWindow *host);

} // namespace zenvor
