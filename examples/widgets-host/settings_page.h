#pragma once

#include <QWidget>

class QAction;

/// Light or dark, and where feedback goes.
class SettingsPage : public QWidget
{
    Q_OBJECT

public:
    /// \a sendFeedback is what the button does, as the menu does.
    explicit SettingsPage(QAction *sendFeedback, QWidget *parent = nullptr);
};
