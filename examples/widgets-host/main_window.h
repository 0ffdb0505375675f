#pragma once

#include "diary.h"

#include <QMainWindow>

class CardList;
class PlantPage;
class QStackedWidget;
class QTabWidget;

/// The app: tabs, a list of plants with a page for each, a diary, settings, and a menu.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Feedback is in it if it was set up before.
    MainWindow();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QAction *addFeedbackMenu();
    QWidget *makePlants();
    void fillLists();
    void showPlant(qsizetype plant);
    void askForEntry(qsizetype plant);
    bool isNarrow() const;

    Diary m_diary;
    QAction *m_shake = nullptr;
    QTabWidget *m_tabs = nullptr;
    QStackedWidget *m_stack = nullptr;
    CardList *m_plants = nullptr;
    CardList *m_entries = nullptr;
    PlantPage *m_page = nullptr;
};
