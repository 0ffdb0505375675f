#include <zenvor/zenvor_export.h>

// Made by the build from what the classes of this folder declare.
void qml_register_types_Zenvor();

/// Every program that links the library asks its linker for this symbol, so that "import Zenvor" works in a
/// program that names the library in QML alone: a linker leaves out of a static library what nobody refers
/// to, and may leave out a shared one altogether.
extern "C" ZENVOR_EXPORT void (*zenvor_link_qml_module())()
{
    return &qml_register_types_Zenvor; // brings the registration along, which runs by itself
}
