#include "platform/qt_video.h"

#include "platform/awaitable_callback.h"
#include "platform/process_end.h"
#include "platform/video.h"
#include "platform/video_rotation.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QMediaMetaData>
#include <QMediaPlayer>
#include <QThread>
#include <QTimer>
#include <QTransform>
#include <QUrl>
#include <QVersionNumber>
#include <QVideoFrame>
#include <QVideoSink>

#include <deque>
#include <mutex>
#include <utility>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

struct VideoThread
{
    QThread thread;
    QObject receiver;
    std::deque<std::function<void()>> work; // under the mutex
    bool isWorking = false; // the thread's
};

std::mutex videoThreadMutex;
VideoThread *videoThread = nullptr;

void endVideoThread()
{
    VideoThread *ended = nullptr;
    {
        const std::lock_guard lock(videoThreadMutex);
        ended = std::exchange(videoThread, nullptr);
    }
    if (!ended)
        return;
    constexpr std::chrono::seconds patience(2);
    ended->thread.requestInterruption();
    ended->thread.quit(); // ends the event loop of the frame that is being read, too
    if (ended->thread.wait(QDeadlineTimer(patience))) // or a disk that does not answer keeps it
        delete ended;
}

// One after the other: work that runs an event loop is asked for the next from within.
void workOff(VideoThread *worker)
{
    if (std::exchange(worker->isWorking, true))
        return;
    for (;;) {
        std::function<void()> next;
        {
            const std::lock_guard lock(videoThreadMutex);
            if (worker->work.empty() || worker->thread.isInterruptionRequested())
                break;
            next = std::move(worker->work.front());
            worker->work.pop_front();
        }
        next();
    }
    worker->isWorking = false;
}

bool hasFFmpegBackend()
{
    const auto folders = QCoreApplication::libraryPaths();
    for (const auto &folder : folders) {
        const QDir plugins(folder + "/multimedia"_L1);
        if (!plugins.entryList({u"*ffmpegmediaplugin*"_s}, QDir::Files).isEmpty())
            return true;
    }
    return false;
}

// Reads one picture of a video. Of this, a thread with an event loop.
class FrameReader
{
public:
    FrameReader(const QString &path, std::chrono::milliseconds position) : m_position(position)
    {
        m_player.setVideoSink(&m_sink);
        QObject::connect(&m_sink, &QVideoSink::videoFrameChanged, &m_loop,
                         [this](const QVideoFrame &frame) { look(frame); });
        QObject::connect(
            &m_player, &QMediaPlayer::mediaStatusChanged, &m_loop,
            [this](QMediaPlayer::MediaStatus status) { proceed(status); }, Qt::QueuedConnection);
        QObject::connect(&m_player, &QMediaPlayer::errorOccurred, &m_loop, &QEventLoop::quit,
                         Qt::QueuedConnection);
        m_player.setSource(QUrl::fromLocalFile(path));
    }

    QImage read()
    {
        constexpr std::chrono::seconds limit(3);
        QTimer::singleShot(limit, &m_loop, &QEventLoop::quit);
        m_loop.exec();
        return m_frame.isValid() ? uprightImage(m_frame, rotationLeft(m_player)) : QImage();
    }

    /// Whether the video ended before it showed a picture.
    bool isShorter() const { return m_isShorter && !m_frame.isValid(); }

private:
    void proceed(QMediaPlayer::MediaStatus status)
    {
        switch (status) {
        case QMediaPlayer::LoadedMedia:
            if (!m_player.hasVideo())
                m_loop.quit();
            else if (!std::exchange(m_isStarted, true))
                start();
            break;
        case QMediaPlayer::EndOfMedia:
            m_isShorter = true;
            m_loop.quit();
            break;
        case QMediaPlayer::NoMedia:
        case QMediaPlayer::InvalidMedia:
            m_loop.quit();
            break;
        case QMediaPlayer::LoadingMedia:
        case QMediaPlayer::StalledMedia:
        case QMediaPlayer::BufferingMedia:
        case QMediaPlayer::BufferedMedia:
            break;
        }
    }

    void start()
    {
        if (m_position.count() > 0)
            m_player.setPosition(m_position.count());
        m_player.play();
    }

    // Decoders begin with the last picture that stands for itself, which may be an earlier one.
    void look(const QVideoFrame &frame)
    {
        const std::chrono::microseconds end(frame.endTime());
        if (!frame.isValid() || m_frame.isValid() || (end.count() >= 0 && end <= m_position))
            return;
        m_frame = frame;
        m_loop.quit();
    }

    const std::chrono::milliseconds m_position;
    QEventLoop m_loop;
    QVideoSink m_sink;
    QMediaPlayer m_player;
    QVideoFrame m_frame;
    bool m_isStarted = false;
    bool m_isShorter = false;
};

std::optional<QImage> readFrame(const QString &path, std::chrono::milliseconds position, int longestSide)
{
    if (!QFileInfo(path).isFile()) // a pipe may never end
        return std::nullopt;
    prepareMediaBackend();
    QImage image;
    constexpr int mostAttempts = 4; // the end of a short video may come before its only picture is passed on
    bool isShorter = true;
    for (int i = 0; i < mostAttempts && isShorter; ++i) {
        FrameReader reader(path, i == 0 ? position : std::chrono::milliseconds::zero());
        image = reader.read();
        isShorter = reader.isShorter();
    }
    if (image.isNull())
        return std::nullopt;
    if (image.width() <= longestSide && image.height() <= longestSide)
        return image;
    return image.scaled(longestSide, longestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

void postToVideoThread(std::function<void()> work)
{
    atEndOfThisThread(endVideoThread);
    const std::lock_guard lock(videoThreadMutex);
    if (!videoThread) {
        videoThread = new VideoThread;
        videoThread->thread.setObjectName("ZenvorVideo"_L1);
        videoThread->receiver.moveToThread(&videoThread->thread);
        videoThread->thread.start(QThread::LowPriority);
        qAddPostRoutine(endVideoThread);
    }
    videoThread->work.push_back(std::move(work));
    QMetaObject::invokeMethod(
        &videoThread->receiver, [worker = videoThread] { workOff(worker); }, Qt::QueuedConnection);
}

void prepareMediaBackend()
{
    static std::once_flag once;
    std::call_once(once, [] {
        constexpr auto variable = "QT_MEDIA_BACKEND";
        // Qt before 6.5 takes GStreamer first, and crashes where that lacks a plugin of its own.
        if (QLibraryInfo::version() >= QVersionNumber(6, 5) || qEnvironmentVariableIsSet(variable)
            || !hasFFmpegBackend())
            return;
        qputenv(variable, "ffmpeg");
        const QMediaPlayer loadsTheBackend;
        qunsetenv(variable);
    });
}

QImage uprightImage(const QVideoFrame &frame, int fileRotation)
{
    const QImage image = frame.toImage();
    return fileRotation == 0 ? image : image.transformed(QTransform().rotate(fileRotation));
}

int rotationLeft(const QMediaPlayer &player)
{
    if (player.metaData().value(QMediaMetaData::Orientation).isValid())
        return 0;
    QFile file(player.source().toLocalFile());
    return file.open(QIODevice::ReadOnly) ? videoRotation(file) : 0;
}

Task<std::optional<QImage>> videoFrame(QString path, std::chrono::milliseconds position, int longestSide,
                                       StopToken stop)
{
    AwaitableCallback<std::optional<QImage>> frame(
        [path, position, longestSide, stop](const std::function<void(std::optional<QImage>)> &done) {
            const auto read = [path, position, longestSide, stop, done] {
                done(stop.stopRequested() ? std::nullopt : readFrame(path, position, longestSide));
            };
            MainActor::shared()->post([read] { postToVideoThread(read); });
        });
    co_return co_await frame;
}

} // namespace zenvor
