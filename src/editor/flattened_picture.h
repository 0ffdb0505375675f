#pragma once

#include "editor/drawing.h"

namespace zenvor {

/// \a picture with what is drawn on it, as both are shown: a picture of the area, with nothing beside the
/// picture but strokes. \a picture itself while there is no area. Ends the stroke that is under way.
QImage flattened(const QImage &picture, Drawing &drawing);

} // namespace zenvor
