#include <zenvor/zenvor_export.h>

// Made by the build from what the classes of this folder declare.
void qml_register_types_Zenvor();

namespace zenvor {

/// Brings the QML module into the program that calls it: a linker leaves out of a static library what
/// nobody refers to, and leaves a shared one out altogether.
ZENVOR_EXPORT bool linkQmlModule();

bool linkQmlModule()
{
    // The address is all that is needed: it brings the registration into the program, which runs by itself.
    static auto *volatile registration = &qml_register_types_Zenvor;
    return registration;
}

} // namespace zenvor
