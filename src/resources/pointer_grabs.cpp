#include "resources/pointer_grabs.h"

namespace zenvor {

void PointerGrabs::keep(QQuickItem *item) const
{
    for (auto *ancestor = item->parentItem(); ancestor; ancestor = ancestor->parentItem()) {
        if (ancestor->inherits("QQuickFlickable"))
            return;
    }
    item->setKeepMouseGrab(true);
    item->setKeepTouchGrab(true);
}

} // namespace zenvor
