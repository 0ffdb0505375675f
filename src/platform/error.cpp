#include "platform/error.h"

namespace zenvor {

QString localizedDescription(const std::exception &error)
{
    if (const auto *own = dynamic_cast<const Error *>(&error))
        return own->localizedDescription();
    return QString::fromUtf8(error.what());
}

} // namespace zenvor
