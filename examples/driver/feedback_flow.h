#pragma once

#include "driver/inbox.h"

namespace driver {

class ExampleHost;
class PictureAlbum;
class Screens;

/// Shakes the device, fills in the form that comes, sends it, and leaves again, with a picture of every
/// screen. \a look is a part of their names. Returns what the host's window showed before.
QImage reportBug(ExampleHost &host, Screens &screens, PictureAlbum &album, const QString &look,
                 const FilledForm &form);

} // namespace driver
