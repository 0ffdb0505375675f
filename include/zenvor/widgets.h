#pragma once

#include <zenvor/zenvor_widgets_export.h>

namespace zenvor {

/// Lets the library show its screens over the windows of Qt Widgets. To be called once, before
/// Zenvor::present(); calling it again changes nothing. On the application object's thread, and only with a
/// QApplication: it does nothing and returns false otherwise.
///
/// In the component Widgets of the package, so that hosts on Qt Quick alone never load Qt Widgets.
ZENVOR_WIDGETS_EXPORT bool enableWidgets();

} // namespace zenvor
