#pragma once

#include <QDir>
#include <QString>

namespace driver {

class PictureAlbum;
class Screens;

/// Adds the three files of the user's folder of pictures to the form that is open, watches the one that is a
/// video, and removes the first again, with a picture of every screen.
void attachMedia(Screens &screens, PictureAlbum &album, const QString &look);

/// Draws on the screenshot of the form that is open, with a picture of the editor and of the form afterwards.
void drawOnScreenshot(Screens &screens, PictureAlbum &album, const QString &look);

/// Empty if there is ink of the drawing on the screenshot in \a report.
QString faultOfDrawing(const QDir &report);

/// Empty if what attachMedia() has left in the form is in \a report, byte by byte, after the screenshot.
QString faultOfMedia(const QDir &report);

} // namespace driver
