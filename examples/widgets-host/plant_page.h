#pragma once

#include "diary.h"

#include <QScrollArea>

class PlantPicture;
class QLabel;

/// One plant, what it needs, and what was done for it.
class PlantPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit PlantPage(Diary &diary, QWidget *parent = nullptr);

    void show(qsizetype plant);

Q_SIGNALS:
    void left();
    void entryWanted(qsizetype plant);

private:
    void fill();

    Diary &m_diary;
    qsizetype m_plant = 0;
    PlantPicture *m_picture = nullptr;
    QLabel *m_name = nullptr;
    QLabel *m_facts = nullptr;
    QLabel *m_watering = nullptr;
    QLabel *m_history = nullptr;
};
