#include "main_window.h"

#include "card_list.h"
#include "entry_dialog.h"
#include "host/feedback_setup.h"
#include "look.h"
#include "plant_page.h"
#include "settings_page.h"

#include <zenvor/shake.h>
#include <zenvor/widgets.h>
#include <zenvor/zenvor.h>

#include <QMenuBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>

using namespace Qt::StringLiterals;

MainWindow::MainWindow()
    : m_tabs(new QTabWidget)
    , m_plants(new CardList)
    , m_entries(new CardList)
    , m_page(new PlantPage(m_diary))
{
    zenvor::enableWidgets();
    setWindowTitle(tr("Windowsill"));
    auto *sendFeedback = addFeedbackMenu();

    m_plants->setObjectName(u"plantList"_s);
    m_entries->setObjectName(u"entryList"_s);
    m_tabs->setDocumentMode(true);
    m_tabs->tabBar()->setObjectName(u"tabs"_s);
    m_tabs->tabBar()->setExpanding(true);
    m_tabs->addTab(makePlants(), tr("Plants"));
    m_tabs->addTab(m_entries, tr("Diary"));
    m_tabs->addTab(new SettingsPage(sendFeedback), tr("Settings"));
    setCentralWidget(m_tabs);

    connect(&m_diary, &Diary::changed, this, &MainWindow::fillLists);
    connect(m_entries, &CardList::chosen, this, [this](int row) { showPlant(m_diary.entries()[row].plant); });
    fillLists();
    setMinimumSize(320, 480);
    resize(960, 720);
}

QAction *MainWindow::addFeedbackMenu()
{
    auto *menu = menuBar()->addMenu(tr("&Help"));
    auto *send = menu->addAction(tr("Send feedback"), this, [] { zenvor::Zenvor::shared().present(); });
    // The library keeps it until the next report.
    auto *attach = menu->addAction(tr("Add this page to the report"), this, [this] {
        zenvor::Zenvor::shared().addPendingAttachment(m_tabs->currentWidget()->grab().toImage(), 0.9);
    });
    menu->addSeparator();
    // As if the device had been shaken: for machines that nobody can shake.
    m_shake =
        menu->addAction(tr("Shake"), QKeySequence(u"Ctrl+Shift+S"_s), this, [] { zenvor::sendShake(); });
    for (auto *action : {send, attach, m_shake})
        action->setEnabled(isFeedbackSetUp());
    return send;
}

QWidget *MainWindow::makePlants()
{
    m_stack = new QStackedWidget;
    m_stack->addWidget(m_plants);
    m_stack->addWidget(m_page);
    connect(m_plants, &CardList::chosen, this, &MainWindow::showPlant);
    connect(m_page, &PlantPage::left, this, [this] { m_stack->setCurrentWidget(m_plants); });
    connect(m_page, &PlantPage::entryWanted, this, &MainWindow::askForEntry);
    return m_stack;
}

void MainWindow::fillLists()
{
    m_plants->clear();
    for (qsizetype i = 0; i < m_diary.plants().size(); ++i) {
        const Plant &plant = m_diary.plants()[i];
        m_plants->add(plant, plant.name, m_diary.nextWatering(i) + u" · "_s + plant.place);
    }
    m_entries->clear();
    for (const auto &entry : m_diary.entries()) {
        const Plant &plant = m_diary.plants()[entry.plant];
        const auto title = plant.name + u" · "_s + nameOf(entry.care);
        m_entries->add(plant, title,
                       entry.note.isEmpty() ? whenWas(entry) : whenWas(entry) + u": "_s + entry.note);
    }
}

void MainWindow::showPlant(qsizetype plant)
{
    m_page->show(plant);
    m_stack->setCurrentWidget(m_page);
    m_tabs->setCurrentIndex(0);
}

void MainWindow::askForEntry(qsizetype plant)
{
    auto *dialog = new EntryDialog(m_diary, plant, this);
    dialog->addAction(m_shake); // what belongs to the window below rests while this one is open
    connect(dialog, &QDialog::accepted, this, [this, dialog] { m_diary.add(dialog->entry()); });
    if (isNarrow())
        dialog->setGeometry(geometry()); // as on a phone
    dialog->open();
}

bool MainWindow::isNarrow() const
{
    constexpr int wideFrom = 720;
    return width() < wideFrom;
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    m_tabs->setTabPosition(isNarrow() ? QTabWidget::South : QTabWidget::North);
    QMainWindow::resizeEvent(event);
}
