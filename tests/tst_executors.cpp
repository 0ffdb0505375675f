#include "platform/awaitable_callback.h"
#include "platform/clock.h"
#include "platform/executor.h"
#include "platform/stop_token.h"
#include "support/await.h"
#include "support/fast_clock.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <QThread>

#include <atomic>
#include <thread>

using namespace zenvor;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Calls back from a thread of its own, as a session or a picker does.
AwaitableCallback<int> elsewhere(int value)
{
    return AwaitableCallback<int>(
        [value](std::function<void(int)> done) { std::thread(done, value).detach(); });
}

Task<bool> resumesOn(std::shared_ptr<Executor> executor)
{
    bool stays = Executor::current() == executor;
    for (int i = 0; i < 20; ++i) {
        auto operation = elsewhere(i);
        const int value = co_await operation;
        stays = stays && value == i && Executor::current() == executor;
    }
    co_return stays;
}

struct Counter
{
    int inside = 0;
    int overlaps = 0;
    int begun = 0;
    int begunWhileWaiting = 0;
};

Task<int> workOnActor(Counter *counter)
{
    const int order = ++counter->begun;
    counter->overlaps += counter->inside;
    ++counter->inside;
    QThread::usleep(100); // long enough for another job to be seen inside, if the actor let it
    --counter->inside;
    auto operation = elsewhere(order);
    const int before = co_await operation;
    if (counter->begun > before)
        ++counter->begunWhileWaiting;
    counter->overlaps += counter->inside;
    co_return order;
}

Task<int> throwing()
{
    auto operation = elsewhere(1);
    co_await operation;
    throw std::runtime_error("from the actor");
}

} // namespace

class TestExecutors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resumesTheCoroutineOnTheExecutorItAwaitedFrom();
    void runsOneJobOfAnActorAtATimeAndGivesItUpWhileAwaiting();
    void bringsAnExceptionBackToTheCaller();
    void losesNoResumptionOfWorkThatEndsAtOnce();
    void dropsWhatIsPostedAfterTheApplicationHasGone();
    void endsASleepEarlyWhenStopped();
    void sleepsByTheClockItWasGiven();
    void runsAStopCallbackOnceAndNeverAfterItsEnd();
};

void TestExecutors::resumesTheCoroutineOnTheExecutorItAwaitedFrom()
{
    const auto actor = std::make_shared<Actor>();
    const auto background = makeBackgroundExecutor();
    const auto main = MainActor::shared();
    QVERIFY(test::await(resumesOn(main)));
    QVERIFY(test::await(runOn(actor, [actor] { return resumesOn(actor); })));
    QVERIFY(test::await(runOn(background, [background] { return resumesOn(background); })));
    QCOMPARE(Executor::current(), std::shared_ptr<Executor>(main));
}

void TestExecutors::runsOneJobOfAnActorAtATimeAndGivesItUpWhileAwaiting()
{
    const auto actor = std::make_shared<Actor>();
    Counter counter;
    std::vector<Task<int>> tasks;
    for (int i = 0; i < 40; ++i)
        tasks.push_back(runOn(actor, [&counter] { return workOnActor(&counter); }));
    for (int i = 0; i < 40; ++i)
        QCOMPARE(test::await(std::move(tasks[size_t(i)])), i + 1);
    QCOMPARE(counter.overlaps, 0);
    QVERIFY(counter.begunWhileWaiting > 0);
}

void TestExecutors::bringsAnExceptionBackToTheCaller()
{
    const auto actor = std::make_shared<Actor>();
    QCOMPARE(test::failureOf<std::runtime_error>(runOn(actor, throwing)).value().what(), "from the actor");
}

namespace {

// Calls back on another thread before the coroutine has had the time to wait.
Task<int> atOnce(int value, int delay)
{
    AwaitableCallback<int> operation([value, delay](std::function<void(int)> done) {
        done(value);
        QElapsedTimer timer;
        timer.start();
        while (timer.nsecsElapsed() < delay) {}
    });
    co_return co_await operation;
}

Task<int> nested(int value, int delay)
{
    const int result = co_await atOnce(value, delay);
    co_return result;
}

} // namespace

void TestExecutors::losesNoResumptionOfWorkThatEndsAtOnce()
{
    for (int i = 0; i < 3000; ++i)
        QCOMPARE(test::await(runOn(makeBackgroundExecutor(), [i] { return nested(i, i % 100 * 300); })), i);
}

void TestExecutors::dropsWhatIsPostedAfterTheApplicationHasGone()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {u"--post-late"_s});
    QVERIFY(child.waitForFinished(20000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 0);
}

void TestExecutors::endsASleepEarlyWhenStopped()
{
    StopSource source;
    QTimer::singleShot(20, this, [&source] { source.requestStop(); });
    test::await(Clock::system().sleep(1h, source.token()));
    test::await(Clock::system().sleep(1h, source.token())); // stopped before it began
}

void TestExecutors::sleepsByTheClockItWasGiven()
{
    const test::FastClock clock(1000);
    QElapsedTimer timer;
    timer.start();
    test::await(clock.sleep(60s));
    QVERIFY(timer.elapsed() >= 60);
}

void TestExecutors::runsAStopCallbackOnceAndNeverAfterItsEnd()
{
    // Ending the registration and requesting the stop race; whatever wins, the callback has either run
    // or will not run once the destructor is through.
    int runs = 0;
    for (int round = 0; round < 500; ++round) {
        StopSource source;
        std::atomic<int> calls = 0;
        std::thread stopper;
        {
            StopCallback kept(source.token(), [&calls] { ++calls; });
            StopCallback dropped(source.token(), [&calls] { calls += 100; });
            stopper = std::thread([&source] { source.requestStop(); });
            if (round % 2)
                std::this_thread::yield();
        }
        const int seen = calls;
        stopper.join();
        QCOMPARE(calls, seen);
        QVERIFY(seen == 0 || seen == 1 || seen == 100 || seen == 101);
        runs += seen;
        StopCallback late(source.token(), [&calls] { calls = -1; });
        QCOMPARE(calls, -1);
    }
    QVERIFY2(runs > 0, "the stop never came in time");
}

namespace {

int postLate(int argc, char **argv)
{
    const auto actor = std::make_shared<Actor>();
    const auto post = [&actor] {
        for (const std::shared_ptr<Executor> &executor :
             {std::shared_ptr<Executor>(MainActor::shared()), std::shared_ptr<Executor>(actor),
              makeBackgroundExecutor()})
            executor->post([] { std::exit(1); });
    };
    {
        const QCoreApplication application(argc, argv);
    }
    post();
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && argv[1] == "--post-late"_ba)
        return postLate(argc, argv);
    QCoreApplication application(argc, argv);
    TestExecutors test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_executors.moc"
