#include "capture/shake_detector.h"

#include "capture/window_shake_hook.h"
#include "platform/accelerometer_motion.h"

#include <zenvor/shake.h>

#include <utility>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds cooldown{1200};

} // namespace

ShakeDetector::ShakeDetector(const Clock &clock)
    : m_logger("com.zenvor.sdk"_L1, "ShakeDetector"_L1)
    , m_clock(clock)
{
}

ShakeDetector::~ShakeDetector() = default;

void ShakeDetector::start(std::function<void()> onShake)
{
    m_onShake = std::move(onShake);
    // Also while running: hook and sensor belong to an application object, which may be a new one.
    WindowShakeHook::installIfNeeded(m_logger);
    if (!m_isRunning) {
        m_isRunning = true;
        m_logger.info("Shake detection started (native motion event)."_L1);
        m_observer = NotificationCenter::defaultCenter().addObserver(
            zenvorWindowDidShake(), [this](const Notification &) { windowDidShake(); });
    }
    // Made here and not with the detector, which may be made on any thread.
    if (!m_accelerometer)
        m_accelerometer = std::make_unique<AccelerometerMotion>([] { sendShake(); });
    m_accelerometer->start();
}

void ShakeDetector::stop()
{
    m_logger.info("Shake detection stopped."_L1);
    m_isRunning = false;
    m_observer.reset();
    m_onShake = nullptr;
    if (m_accelerometer)
        m_accelerometer->stop();
}

void ShakeDetector::windowDidShake()
{
    const auto now = m_clock.now();
    if (m_lastTrigger && now - *m_lastTrigger <= cooldown)
        return;
    m_lastTrigger = now;
    m_logger.info("Shake detected via native motion event."_L1);
    // A copy: the callback may stop or end this detector.
    if (const auto onShake = m_onShake)
        onShake();
}

} // namespace zenvor
