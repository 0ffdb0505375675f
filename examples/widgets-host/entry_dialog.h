#pragma once

#include "diary.h"

#include <QDialog>

class QComboBox;
class QLineEdit;

/// Asks what was done for a plant.
class EntryDialog : public QDialog
{
    Q_OBJECT

public:
    EntryDialog(const Diary &diary, qsizetype plant, QWidget *parent);

    Entry entry() const;

private:
    const qsizetype m_plant;
    QComboBox *m_care = nullptr;
    QLineEdit *m_note = nullptr;
};
