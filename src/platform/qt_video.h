#pragma once

#include <functional>

class QImage;
class QMediaPlayer;
class QVideoFrame;

namespace zenvor {

/// Has \a work done by a thread with an event loop, which is made by the first and ended with the application
/// object, or the process. What has not begun by then is dropped. Main thread.
void postToVideoThread(std::function<void()> work);

/// To be called before each QMediaPlayer is made. The first call of a process takes a tenth of a second. Any
/// thread.
void prepareMediaBackend();

/// The picture in \a frame, turned upright: Qt before 6.5 leaves it as the camera lay. Slow: not for the main
/// thread.
QImage uprightImage(const QVideoFrame &frame, int fileRotation);

/// What uprightImage() has to turn; 0 where \a player does so itself. Reads the player's file.
int rotationLeft(const QMediaPlayer &player);

} // namespace zenvor
