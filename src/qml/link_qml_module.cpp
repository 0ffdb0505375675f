// Compiled into every program that links the library, so that "import Zenvor" works without a line of C++.
#include <zenvor/zenvor_export.h>

namespace zenvor {

ZENVOR_EXPORT bool linkQmlModule();

namespace {

[[maybe_unused]] const bool isQmlModuleLinked = linkQmlModule();

} // namespace

} // namespace zenvor
