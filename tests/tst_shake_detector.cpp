#include "capture/shake_detector.h"
#include "capture/window_shake_hook.h"
#include "support/log_recorder.h"

#include <zenvor/motion_event.h>
#include <zenvor/shake.h>

#include <QApplication>
#include <QMainWindow>
#include <QProcess>
#include <QTest>
#include <QThread>
#include <QWindow>

#include <functional>
#include <stdexcept>

using namespace zenvor;
using namespace Qt::StringLiterals;
using std::chrono::milliseconds;
using test::LogRecorder;

namespace {

class SettableClock final : public Clock
{
public:
    std::chrono::steady_clock::time_point now() const override { return moment; }
    std::chrono::steady_clock::time_point moment{};
};

/// A window of the host that has a handler of its own for shakes.
class HostWindow : public QWindow
{
public:
    std::function<void(MotionEvent *)> onMotion;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == MotionEvent::eventType() && onMotion)
            onMotion(static_cast<MotionEvent *>(event));
        return QWindow::event(event);
    }
};

class HostWidget : public QMainWindow
{
public:
    int motions = 0;

protected:
    bool event(QEvent *event) override
    {
        motions += event->type() == MotionEvent::eventType();
        return QMainWindow::event(event);
    }
};

/// An event filter of the host.
class HostFilter : public QObject
{
public:
    explicit HostFilter(std::function<bool(QEvent *)> filter) : m_filter(std::move(filter)) {}

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        return event->type() == MotionEvent::eventType() && m_filter(event);
    }

private:
    std::function<bool(QEvent *)> m_filter;
};

void sendMotion(QWindow *window, MotionEvent::Subtype subtype = MotionEvent::Subtype::Shake)
{
    MotionEvent event(subtype);
    QCoreApplication::sendEvent(window, &event);
}

bool takesFocus(QWindow *window)
{
    window->requestActivate();
    return QTest::qWaitFor([window] { return QGuiApplication::focusWindow() == window; });
}

} // namespace

class TestShakeDetector : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void triesAgainWhenTheHookCannotBeInstalled(); // first: once installed, the hook stays
    void tellsOfAShakeWhateverTheKindOfWindow_data();
    void tellsOfAShakeWhateverTheKindOfWindow();
    void announcesAShakeAfterAllHandlingOfTheHost();
    void announcesOnlyShakesThatNobodyTook_data();
    void announcesOnlyShakesThatNobodyTook();
    void survivesWhatTheHandlerOfAWindowDoes();
    void dropsAShakeThatComesTooSoon_data();
    void dropsAShakeThatComesTooSoon();
    void callsTheLastCallbackUntilItIsStopped();
    void mayBeEndedByItsCallback();
    void deliversToObserversOnTheMainThread();
};

void TestShakeDetector::triesAgainWhenTheHookCannotBeInstalled()
{
    LogRecorder log;
    const Logger logger("com.zenvor.sdk"_L1, "ShakeDetector"_L1);
    const std::unique_ptr<QThread> other(
        QThread::create([&logger] { WindowShakeHook::installIfNeeded(logger); }));
    other->start();
    QVERIFY(other->wait());
    QCOMPARE(log.take(),
             QStringList{u"error ShakeDetector: Failed to verify native shake hook installation."_s});

    int shakes = 0;
    HostWindow window;
    ShakeDetector detector;
    detector.start([&shakes] { ++shakes; });
    sendMotion(&window);
    QCOMPARE(shakes, 1);

    QProcess console; // a program without windows
    console.start(QCoreApplication::applicationFilePath(), {u"--console"_s});
    QVERIFY(console.waitForFinished());
    QCOMPARE(console.exitCode(), 0);
    QVERIFY(console.readAllStandardError().contains("Failed to install native shake hook."));
}

void TestShakeDetector::tellsOfAShakeWhateverTheKindOfWindow_data()
{
    QTest::addColumn<bool>("isWidget");
    QTest::newRow("window") << false;
    QTest::newRow("widget") << true;
}

void TestShakeDetector::tellsOfAShakeWhateverTheKindOfWindow()
{
    QFETCH(const bool, isWidget);
    HostWindow window;
    HostWidget widget;
    if (isWidget)
        widget.show();
    else
        window.show();
    QWindow *shaken = isWidget ? widget.windowHandle() : &window;
    QVERIFY(takesFocus(shaken));

    QList<QObject *> announced;
    const auto token = NotificationCenter::defaultCenter().addObserver(
        u"com.zenvor.sdk.windowDidShake"_s,
        [&announced](const Notification &notification) { announced.append(notification.object); });
    int shakes = 0;
    ShakeDetector detector;
    detector.start([&shakes] { ++shakes; });
    QVERIFY(sendShake());
    QCOMPARE(announced, QList<QObject *>{shaken});
    QCOMPARE(shakes, 1);
    QCOMPARE(widget.motions, isWidget ? 1 : 0);

    shaken->hide(); // no window is shaken while the app is in the background
    QVERIFY(!sendShake());
    QCOMPARE(shakes, 1);
}

void TestShakeDetector::announcesAShakeAfterAllHandlingOfTheHost()
{
    QStringList order;
    const auto seen = [&order](const QString &by) {
        return [&order, by](QEvent *) {
            order.append(by);
            return false;
        };
    };
    HostWindow window;
    HostFilter onApplication(seen(u"application's filter"_s));
    HostFilter onWindow(seen(u"window's filter"_s));
    window.onMotion = [&order](MotionEvent *) {
        order.append(u"handler"_s);
    };
    window.installEventFilter(&onWindow);

    ShakeDetector detector;
    detector.start([&order] { order.append(u"callback"_s); });
    qApp->installEventFilter(&onApplication);
    sendMotion(&window);
    QCOMPARE(order.mid(order.size() - 4).join(u", "),
             u"application's filter, window's filter, handler, callback"_s);
}

void TestShakeDetector::announcesOnlyShakesThatNobodyTook_data()
{
    QTest::addColumn<MotionEvent::Subtype>("subtype");
    QTest::addColumn<bool>("isAccepted");
    QTest::addColumn<int>("expected");
    QTest::newRow("shake") << MotionEvent::Subtype::Shake << false << 1;
    QTest::newRow("accepted shake") << MotionEvent::Subtype::Shake << true << 0;
    QTest::newRow("other movement") << MotionEvent::Subtype::None << false << 0;
}

void TestShakeDetector::announcesOnlyShakesThatNobodyTook()
{
    QFETCH(const MotionEvent::Subtype, subtype);
    QFETCH(const bool, isAccepted);
    HostWindow window;
    int handled = 0;
    window.onMotion = [&](MotionEvent *event) {
        ++handled;
        QCOMPARE(event->subtype(), subtype);
        event->setAccepted(isAccepted);
    };
    int shakes = 0;
    ShakeDetector detector;
    detector.start([&shakes] { ++shakes; });
    sendMotion(&window, subtype);
    QCOMPARE(handled, 1);
    QTEST(shakes, "expected");
}

void TestShakeDetector::survivesWhatTheHandlerOfAWindowDoes()
{
    QList<QObject *> announced;
    const auto token = NotificationCenter::defaultCenter().addObserver(
        zenvorWindowDidShake(),
        [&announced](const Notification &notification) { announced.append(notification.object); });
    ShakeDetector detector;
    detector.start([] {});

    auto *doomed = new HostWindow;
    doomed->onMotion = [doomed](MotionEvent *) {
        doomed->deleteLater();
    };
    sendMotion(doomed);
    QCOMPARE(announced.size(), 1);

    HostWindow inner;
    HostWindow outer;
    outer.onMotion = [&inner](MotionEvent *) {
        sendMotion(&inner);
    };
    announced.clear();
    sendMotion(&outer);
    QCOMPARE(announced, (QList<QObject *>{&inner, &outer}));

    HostWindow throwing;
    throwing.onMotion = [](MotionEvent *) {
        throw std::runtime_error("of the host");
    };
    announced.clear();
    for (int i = 0; i < 2; ++i)
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, sendMotion(&throwing));
    sendMotion(&inner);
    QCOMPARE(announced, QList<QObject *>{&inner});

    auto *deleted = new HostWindow;
    HostFilter deleting([deleted](QEvent *) {
        delete deleted;
        return true;
    });
    deleted->installEventFilter(&deleting);
    announced.clear();
    sendMotion(deleted);
    QVERIFY(announced.isEmpty());
}

void TestShakeDetector::dropsAShakeThatComesTooSoon_data()
{
    QTest::addColumn<QList<milliseconds>>("shakes");
    QTest::addColumn<int>("accepted");
    const auto row = [](const char *name, QList<milliseconds> shakes, int accepted) {
        QTest::newRow(name) << shakes << accepted;
    };
    using namespace std::chrono_literals;
    row("just the cooldown apart", {0ms, 1200ms}, 1);
    row("a little more apart", {0ms, 1201ms}, 2);
    row("counted from the last accepted one", {0ms, 1100ms, 1300ms, 2400ms, 2600ms}, 3);
}

void TestShakeDetector::dropsAShakeThatComesTooSoon()
{
    QFETCH(const QList<milliseconds>, shakes);
    SettableClock clock;
    ShakeDetector detector(clock);
    HostWindow window;
    int accepted = 0;
    for (const auto moment : shakes) {
        clock.moment = std::chrono::steady_clock::time_point(moment);
        detector.start([&accepted] { ++accepted; });
        sendMotion(&window);
        detector.stop(); // which does not forget the last shake
    }
    QTEST(accepted, "accepted");
}

void TestShakeDetector::callsTheLastCallbackUntilItIsStopped()
{
    LogRecorder log;
    HostWindow window;
    QStringList called;
    SettableClock clock;
    ShakeDetector detector(clock);
    detector.stop();
    detector.start([&called] { called.append(u"first"_s); });
    detector.start([&called] { called.append(u"second"_s); });
    sendMotion(&window);
    detector.stop();
    clock.moment += std::chrono::hours(1);
    sendMotion(&window);
    QCOMPARE(called, QStringList{u"second"_s});
    QCOMPARE(log.take(),
             (QStringList{u"info ShakeDetector: Shake detection stopped."_s,
                          u"info ShakeDetector: Shake detection started (native motion event)."_s,
                          u"info ShakeDetector: Shake detected via native motion event."_s,
                          u"info ShakeDetector: Shake detection stopped."_s}));
}

void TestShakeDetector::mayBeEndedByItsCallback()
{
    HostWindow window;
    auto detector = std::make_unique<ShakeDetector>();
    bool isCalled = false;
    detector->start([&] {
        detector.reset();
        isCalled = true;
    });
    sendMotion(&window);
    QVERIFY(isCalled);
    sendMotion(&window); // nobody listens
}

void TestShakeDetector::deliversToObserversOnTheMainThread()
{
    QThread *delivered = nullptr;
    QObject *object = this;
    auto &center = NotificationCenter::defaultCenter();
    const auto token = center.addObserver(u"test"_s, [&](const Notification &notification) {
        delivered = QThread::currentThread();
        object = notification.object;
    });
    const std::unique_ptr<QThread> poster(QThread::create([&center] {
        QObject gone;
        center.post(u"other"_s);
        center.post(u"test"_s, &gone);
    }));
    poster->start();
    QVERIFY(poster->wait());
    QVERIFY(!delivered);
    QTRY_COMPARE(delivered, thread());
    QCOMPARE(object, nullptr);
}

int main(int argc, char **argv)
{
    if (argc > 1 && argv[1] == "--console"_ba) {
        QCoreApplication application(argc, argv);
        ShakeDetector detector;
        detector.start([] {});
        return sendShake() ? 1 : 0;
    }
    QApplication application(argc, argv);
    TestShakeDetector test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_shake_detector.moc"
