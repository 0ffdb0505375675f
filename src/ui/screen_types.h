#pragma once

#include "ui/category_dialog_view_controller.h"

#include <QtQml/qqml.h>

namespace zenvor {

// The view controllers, for the views that bind to them; they know nothing of QML themselves.
struct CategoryDialogViewControllerType
{
    Q_GADGET
    QML_FOREIGN(zenvor::CategoryDialogViewController)
    QML_NAMED_ELEMENT(CategoryDialogViewController)
    QML_UNCREATABLE("made by the flow")
};

} // namespace zenvor
