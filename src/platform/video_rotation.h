#pragma once

class QIODevice;

namespace zenvor {

/// By how many degrees clockwise the pictures of a video are to be turned: 0, 90, 180 or 270, as an MP4 or
/// QuickTime file says of its first track of pictures; 0 for any other file. \a file is open and can be
/// sought in. At most some megabytes of it are read. Any thread.
int videoRotation(QIODevice &file);

} // namespace zenvor
