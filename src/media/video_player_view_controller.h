#pragma once

#include "platform/video.h"
#include "platform/view_controller.h"

#include <QVariant>

namespace zenvor {

class AttachmentFile;

/// Plays a video, from when it is on screen.
class VideoPlayerViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(QVariant picture READ picture NOTIFY pictureChanged)
    Q_PROPERTY(QSizeF pictureSize READ pictureSize NOTIFY pictureChanged)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY changed)
    Q_PROPERTY(int position READ position NOTIFY changed)
    Q_PROPERTY(int duration READ duration NOTIFY changed)

public:
    /// Plays what \a playback has opened, and keeps \a file, which that is, for so long. \a onFailed is
    /// called when the player is gone because the video cannot be played.
    VideoPlayerViewController(std::unique_ptr<VideoPlayback> playback, std::shared_ptr<AttachmentFile> file,
                              std::function<void()> onFailed);
    ~VideoPlayerViewController() override;

    QString viewName() const override { return QStringLiteral("VideoPlayer"); }
    void viewDidAppear() override;

    /// A QImage; nothing before the first.
    QVariant picture() const { return m_picture; }
    QSizeF pictureSize() const { return m_pictureSize; }
    bool isPlaying() const { return m_playback->isPlaying(); }
    /// In milliseconds, both; the duration is 0 until it is known.
    int position() const { return int(m_playback->position()); }
    int duration() const { return int(m_playback->duration()); }

    Q_INVOKABLE void playPauseTapped();
    Q_INVOKABLE void seek(int position);
    Q_INVOKABLE void closeTapped();
    Q_INVOKABLE void leave() override { closeTapped(); }

Q_SIGNALS:
    void changed();
    void pictureChanged();

private:
    void fail();

    const std::shared_ptr<AttachmentFile> m_file;
    const std::unique_ptr<VideoPlayback> m_playback;
    const std::function<void()> m_onFailed;
    QVariant m_picture;
    QSizeF m_pictureSize;
};

} // namespace zenvor
