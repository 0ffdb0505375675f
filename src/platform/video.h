#pragma once

#include "platform/stop_token.h"
#include "platform/task.h"

#include <QImage>
#include <QObject>

#include <chrono>
#include <memory>
#include <optional>

namespace zenvor {

/// The picture that the video in the file \a path shows at \a position, or its first one if it is shorter;
/// upright, and no larger than \a longestSide pixels. Nothing if the file holds no video that can be decoded
/// within seconds, if \a stop has been requested before its turn came, and where the library was built
/// without Qt Multimedia. From any thread; one after the other, on a thread of their own.
Task<std::optional<QImage>> videoFrame(QString path, std::chrono::milliseconds position, int longestSide,
                                       StopToken stop);

/// A video that is played, picture by picture, with its sound. Main thread.
class VideoPlayback : public QObject
{
    Q_OBJECT

public:
    /// Starts to load the video in the file \a path. Null where the library was built without Qt Multimedia.
    static std::unique_ptr<VideoPlayback> open(const QString &path);

    /// From the beginning, if it is at the end.
    virtual void play() = 0;
    virtual void pause() = 0;
    /// To \a position, in milliseconds, which is moved into the video if it is outside.
    virtual void seek(qint64 position) = 0;

    virtual bool isPlaying() const = 0;
    /// In milliseconds.
    virtual qint64 position() const = 0;
    /// In milliseconds; 0 until it is known.
    virtual qint64 duration() const = 0;

Q_SIGNALS:
    /// It plays or not, position, or duration.
    void changed();
    /// The picture to be shown from now on, upright.
    void frameChanged(const QImage &image);
    /// It cannot be played.
    void failed();
};

} // namespace zenvor
