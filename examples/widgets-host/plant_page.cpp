#include "plant_page.h"

#include "look.h"
#include "plant_picture.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PlantPage::PlantPage(Diary &diary, QWidget *parent)
    : QScrollArea(parent)
    , m_diary(diary)
    , m_picture(new PlantPicture)
    , m_name(look::label({}, look::titleSize, QFont::DemiBold))
    , m_facts(look::quietLabel({}))
    , m_watering(look::label({}, look::textSize, QFont::DemiBold))
    , m_history(look::label({}))
{
    auto *back = new QPushButton(tr("‹ Plants"));
    back->setObjectName(u"backButton"_s);
    back->setFlat(true);
    connect(back, &QPushButton::clicked, this, &PlantPage::left);
    auto *write = new QPushButton(tr("Write in the diary…"));
    write->setObjectName(u"entryButton"_s);
    connect(write, &QPushButton::clicked, this, [this] { Q_EMIT entryWanted(m_plant); });

    auto *column = new QWidget;
    column->setMaximumWidth(look::readingWidth);
    auto *layout = new QVBoxLayout(column);
    layout->setContentsMargins(look::margin, look::gap, look::margin, look::margin);
    layout->setSpacing(look::gap);
    layout->addWidget(back, 0, Qt::AlignLeft);
    layout->addWidget(m_picture);
    layout->addWidget(m_name);
    layout->addWidget(m_facts);
    layout->addWidget(m_watering);
    layout->addWidget(write);
    layout->addSpacing(look::gap);
    layout->addWidget(look::label(tr("Diary"), look::textSize, QFont::DemiBold));
    layout->addWidget(m_history);
    layout->addStretch();

    setWidget(column);
    setWidgetResizable(true);
    setAlignment(Qt::AlignHCenter);
    setFrameShape(NoFrame);
    connect(&m_diary, &Diary::changed, this, &PlantPage::fill);
}

void PlantPage::show(qsizetype plant)
{
    m_plant = plant;
    fill();
}

void PlantPage::fill()
{
    const Plant &plant = m_diary.plants()[m_plant];
    m_picture->setPlant(plant);
    m_name->setText(plant.name);
    m_facts->setText(
        tr("%1 · %2 · water every %3 days").arg(plant.species, plant.place).arg(plant.waterEveryDays));
    m_watering->setText(m_diary.nextWatering(m_plant));
    QStringList lines;
    for (const auto &entry : m_diary.entries()) {
        if (entry.plant != m_plant)
            continue;
        const auto line = nameOf(entry.care) + u' ' + whenWas(entry);
        lines += entry.note.isEmpty() ? line : line + u": "_s + entry.note;
    }
    m_history->setText(lines.isEmpty() ? tr("Nothing yet.") : lines.join(u'\n'));
}
