#include "entry_dialog.h"

#include "look.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

EntryDialog::EntryDialog(const Diary &diary, qsizetype plant, QWidget *parent)
    : QDialog(parent)
    , m_plant(plant)
    , m_care(new QComboBox)
    , m_note(new QLineEdit)
{
    setObjectName(u"entryDialog"_s);
    setWindowTitle(tr("New entry"));
    setAttribute(Qt::WA_DeleteOnClose);

    for (const auto care :
         {Entry::Care::Watered, Entry::Care::Fed, Entry::Care::Repotted, Entry::Care::Pruned})
        m_care->addItem(nameOf(care), int(care));
    m_care->setAccessibleName(tr("Care"));
    m_note->setPlaceholderText(tr("How does it look?"));
    m_note->setAccessibleName(tr("Note"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel | QDialogButtonBox::Save);
    buttons->button(QDialogButtonBox::Save)->setObjectName(u"saveEntryButton"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(look::margin, look::margin, look::margin, look::margin);
    layout->setSpacing(look::gap);
    layout->addWidget(look::label(tr("What did you do for %1?").arg(diary.plants()[plant].name),
                                  look::textSize, QFont::DemiBold));
    layout->addWidget(m_care);
    layout->addWidget(m_note);
    layout->addStretch();
    layout->addWidget(buttons);
    m_note->setFocus();
    resize(look::dialogWidth, 0);
}

Entry EntryDialog::entry() const
{
    return {m_plant, 0, Entry::Care(m_care->currentData().toInt()), m_note->text().trimmed()};
}
