#include "media/video_player_view_controller.h"

#include "media/attachment_file.h"

namespace zenvor {

VideoPlayerViewController::VideoPlayerViewController(std::unique_ptr<VideoPlayback> playback,
                                                     std::shared_ptr<AttachmentFile> file,
                                                     std::function<void()> onFailed)
    : m_file(std::move(file))
    , m_playback(std::move(playback))
    , m_onFailed(std::move(onFailed))
{
    connect(m_playback.get(), &VideoPlayback::changed, this, &VideoPlayerViewController::changed);
    connect(m_playback.get(), &VideoPlayback::failed, this, &VideoPlayerViewController::fail);
    connect(m_playback.get(), &VideoPlayback::frameChanged, this, [this](const QImage &image) {
        m_picture = image;
        m_pictureSize = image.size();
        Q_EMIT pictureChanged();
    });
}

VideoPlayerViewController::~VideoPlayerViewController() = default;

void VideoPlayerViewController::viewDidAppear()
{
    m_playback->play();
}

void VideoPlayerViewController::playPauseTapped()
{
    if (isPlaying())
        m_playback->pause();
    else
        m_playback->play();
}

void VideoPlayerViewController::seek(int position)
{
    m_playback->seek(position);
}

void VideoPlayerViewController::closeTapped()
{
    m_playback->pause();
    dismiss(true, {});
}

void VideoPlayerViewController::fail()
{
    dismiss(true, m_onFailed);
}

} // namespace zenvor
