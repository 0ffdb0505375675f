#pragma once

namespace zenvor {

class Logger;

/// Announces every shake that a window of the process was sent and did not accept, under the name
/// zenvorWindowDidShake(), after all handling of the window's own: its event handlers and event filters,
/// and the filters on the application. Quick and Widgets windows alike.
class WindowShakeHook
{
public:
    WindowShakeHook() = delete;

    /// From the first success on for as long as there is this application object; later calls do
    /// nothing. A failure is logged to \a logger, and the next call tries again. Main thread.
    static void installIfNeeded(const Logger &logger);
};

} // namespace zenvor
