#include "platform/image.h"
#include "platform/qt_video.h"
#include "platform/screen.h"
#include "platform/video.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QCoreApplication>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QPointer>
#include <QUrl>
#include <QVideoFrame>
#include <QVideoSink>

#include <algorithm>
#include <optional>
#include <utility>

namespace zenvor {

namespace {

// Pictures are converted on another thread, one at a time; of those that come meanwhile only the last is
// kept.
class QtVideoPlayback final : public VideoPlayback
{
public:
    explicit QtVideoPlayback(const QString &path)
    {
        m_player.setVideoSink(&m_sink);
        if (!QMediaDevices::defaultAudioOutput().isNull())
            m_player.setAudioOutput(&m_sound.emplace());
        connect(&m_sink, &QVideoSink::videoFrameChanged, this, &QtVideoPlayback::take);
        connect(&m_player, &QMediaPlayer::playbackStateChanged, this, &VideoPlayback::changed);
        connect(&m_player, &QMediaPlayer::positionChanged, this, &VideoPlayback::changed);
        connect(&m_player, &QMediaPlayer::durationChanged, this, &VideoPlayback::changed);
        connect(&m_player, &QMediaPlayer::mediaStatusChanged, this, &QtVideoPlayback::follow,
                Qt::QueuedConnection);
        connect(&m_player, &QMediaPlayer::errorOccurred, this, &VideoPlayback::failed, Qt::QueuedConnection);
        m_player.setSource(QUrl::fromLocalFile(path));
    }

    void play() override
    {
        setStepping(false);
        m_player.play();
    }
    void pause() override { m_player.pause(); }
    void seek(qint64 position) override
    {
        const bool wasPlaying = isPlaying();
        m_player.setPosition(std::clamp<qint64>(position, 0, m_player.duration()));
        if (wasPlaying)
            return;
        setStepping(true); // up to the next picture: a player that stands still shows none
        m_player.play();
    }
    bool isPlaying() const override
    {
        return m_player.playbackState() == QMediaPlayer::PlayingState && !m_isStepping;
    }
    qint64 position() const override { return m_player.position(); }
    qint64 duration() const override { return m_player.duration(); }

private:
    void follow(QMediaPlayer::MediaStatus status)
    {
        if (status != QMediaPlayer::LoadedMedia)
            return;
        m_rotation = rotationLeft(m_player);
        if (!m_player.hasVideo())
            Q_EMIT failed();
    }

    void take(const QVideoFrame &frame)
    {
        if (!frame.isValid()) // at the end: the last picture stays
            return;
        if (m_isStepping) {
            m_player.pause();
            setStepping(false);
        }
        m_next = frame;
        if (!m_isConverting)
            convert();
    }

    void setStepping(bool isStepping)
    {
        m_isStepping = isStepping;
        if (m_sound)
            m_sound->setMuted(isStepping);
    }

    void convert()
    {
        m_isConverting = true;
        postToVideoThread([self = QPointer(this), frame = std::exchange(m_next, {}), rotation = m_rotation,
                           longestSide = Screen::longestSideInPixels()] {
            const QImage image = shrunk(uprightImage(frame, rotation), longestSide);
            QMetaObject::invokeMethod(
                qApp,
                [self, image] {
                    if (self)
                        self->show(image);
                },
                Qt::QueuedConnection);
        });
    }

    void show(const QImage &image)
    {
        m_isConverting = false;
        if (!image.isNull())
            Q_EMIT frameChanged(image);
        if (m_next.isValid())
            convert();
    }

    QVideoSink m_sink;
    std::optional<QAudioOutput> m_sound;
    QMediaPlayer m_player;
    QVideoFrame m_next;
    int m_rotation = 0;
    bool m_isConverting = false;
    bool m_isStepping = false;
};

} // namespace

std::unique_ptr<VideoPlayback> VideoPlayback::open(const QString &path)
{
    prepareMediaBackend();
    return std::make_unique<QtVideoPlayback>(path);
}

} // namespace zenvor
