#pragma once

#include "client/feedback_category.h"
#include "platform/view_controller.h"

namespace zenvor {

/// Asks what the user wants to do. For one presentation.
class CategoryDialogViewController : public ViewController
{
    Q_OBJECT
    Q_PROPERTY(QString versionText READ versionText CONSTANT)

public:
    /// Called once, when the dialog is gone after a choice.
    std::function<void(FeedbackCategory)> onSelect;
    /// Called once, when the dialog is gone without one.
    std::function<void()> onCancel;

    QString viewName() const override { return QStringLiteral("CategoryDialog"); }
    QString versionText() const;

    Q_INVOKABLE void reportBug();
    Q_INVOKABLE void suggestImprovement();
    Q_INVOKABLE void cancelTapped();
    /// A tap beside the card.
    Q_INVOKABLE void backgroundTapped();

    Q_INVOKABLE void leave() override { cancelTapped(); }

private:
    void didSelect(FeedbackCategory category);

    bool m_isHandlingSelection = false;
};

} // namespace zenvor
