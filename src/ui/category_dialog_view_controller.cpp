#include "ui/category_dialog_view_controller.h"

#include "resources/string_table.h"

#include <zenvor/zenvor_version.h>

namespace zenvor {

using namespace Qt::StringLiterals;

QString CategoryDialogViewController::versionText() const
{
    const auto version = QStringLiteral(ZENVOR_VERSION).trimmed();
    return version.isEmpty() ? localizedString("zenvor_sdk_version_unknown"_ba, u"Zenvor v?"_s)
                             : localizedString("zenvor_sdk_version_format"_ba, u"Zenvor v%@"_s, {version});
}

void CategoryDialogViewController::reportBug()
{
    didSelect(FeedbackCategory::Bug);
}

void CategoryDialogViewController::suggestImprovement()
{
    didSelect(FeedbackCategory::Improvement);
}

void CategoryDialogViewController::didSelect(FeedbackCategory category)
{
    if (m_isHandlingSelection)
        return;
    m_isHandlingSelection = true;
    // Not animated, other than a cancel: the form follows at once.
    dismiss(false, [this, category] {
        if (onSelect)
            onSelect(category);
    });
}

void CategoryDialogViewController::cancelTapped()
{
    dismiss(true, [this] {
        if (onCancel)
            onCancel();
    });
}

void CategoryDialogViewController::backgroundTapped()
{
    cancelTapped();
}

} // namespace zenvor
