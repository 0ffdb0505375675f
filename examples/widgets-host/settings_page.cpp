#include "settings_page.h"

#include "host/feedback_setup.h"
#include "look.h"

#include <zenvor/report_service.h>

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

SettingsPage::SettingsPage(QAction *sendFeedback, QWidget *parent) : QWidget(parent)
{
    auto *dark = new QCheckBox(tr("Dark"));
    dark->setObjectName(u"darkSwitch"_s);
    dark->setChecked(look::isDark());
    dark->setMinimumHeight(look::touchHeight);
    connect(dark, &QCheckBox::toggled, this, &look::setDark);

    const bool isOn = isFeedbackSetUp();
    auto *send = new QPushButton(sendFeedback->text());
    send->setObjectName(u"feedbackButton"_s);
    send->setVisible(isOn);
    connect(send, &QPushButton::clicked, sendFeedback, &QAction::trigger);

    auto *column = new QWidget;
    column->setMaximumWidth(look::readingWidth);
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(look::margin, look::margin, look::margin, look::margin);
    layout->setSpacing(look::gap);
    layout->addWidget(look::label(tr("Look"), look::titleSize, QFont::DemiBold));
    layout->addWidget(dark, 0, Qt::AlignLeft);
    layout->addSpacing(look::gap);
    layout->addWidget(look::label(tr("Feedback"), look::titleSize, QFont::DemiBold));
    layout->addWidget(look::quietLabel(
        isOn ? tr("Goes to %1. The menu, a shake of the device, or Ctrl+Shift+S opens it.")
                   .arg(zenvor::reportServiceUrl().toString())
             : tr("Is off: start this app with --token, and with --service for a report service of your own. "
                  "\"./dev demo --widgets\" does both.")));
    layout->addWidget(send);
    layout->addStretch();

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(column);
}
