#include "diary.h"

#include <algorithm>

using namespace Qt::StringLiterals;

Diary::Diary()
    : m_plants{
        {u"Greta"_s, u"Swiss cheese plant"_s, u"Living room"_s, 7, Plant::Shape::Fan, 0x3F8F5A, 0xC46F4E},
        {u"Spike"_s, u"Column cactus"_s, u"Kitchen sill"_s, 21, Plant::Shape::Column, 0x5B9A6F, 0xD9A441},
        {u"Rapunzel"_s, u"Golden pothos"_s, u"Book shelf"_s, 6, Plant::Shape::Trailing, 0x8DB84A, 0x5C7FA3},
        {u"Basil"_s, u"Sweet basil"_s, u"Kitchen sill"_s, 2, Plant::Shape::Fan, 0x6FAF3C, 0xB85C6B},
        {u"Old Man"_s, u"Old man cactus"_s, u"Study"_s, 28, Plant::Shape::Column, 0x9DB59A, 0x7C6A9C},
        {u"Ivy"_s, u"English ivy"_s, u"Balcony"_s, 4, Plant::Shape::Trailing, 0x3E7D4B, 0xC9825A},
        {u"Lady Fern"_s, u"Boston fern"_s, u"Bathroom"_s, 3, Plant::Shape::Fan, 0x57A05A, 0x6D8E8A},
    }
    , m_entries{
          {3, 0, Entry::Care::Watered, {}},
          {6, 1, Entry::Care::Watered, u"Misted the fronds as well."_s},
          {5, 2, Entry::Care::Pruned, u"Off the neighbours' drainpipe."_s},
          {0, 3, Entry::Care::Watered, u"A new leaf, with two holes in it."_s},
          {2, 6, Entry::Care::Watered, {}},
          {1, 9, Entry::Care::Watered, {}},
          {0, 12, Entry::Care::Fed, u"Half a dose."_s},
          {4, 16, Entry::Care::Watered, {}},
          {4, 20, Entry::Care::Repotted, u"One size up, and three thorns in the thumb."_s},
      }
{
}

void Diary::add(const Entry &entry)
{
    m_entries.prepend(entry);
    Q_EMIT changed();
}

QString Diary::nextWatering(qsizetype plant) const
{
    const auto last = std::find_if(m_entries.cbegin(), m_entries.cend(), [plant](const Entry &entry) {
        return entry.plant == plant && entry.care == Entry::Care::Watered;
    });
    const int days = last == m_entries.cend() ? 0 : m_plants[plant].waterEveryDays - last->daysAgo;
    if (days <= 0)
        return tr("Water today");
    return days == 1 ? tr("Water tomorrow") : tr("Water in %1 days").arg(days);
}

QString nameOf(Entry::Care care)
{
    switch (care) {
    case Entry::Care::Watered:
        return Diary::tr("Watered");
    case Entry::Care::Fed:
        return Diary::tr("Fed");
    case Entry::Care::Repotted:
        return Diary::tr("Repotted");
    case Entry::Care::Pruned:
        return Diary::tr("Pruned");
    }
    return {};
}

QString whenWas(const Entry &entry)
{
    if (entry.daysAgo == 0)
        return Diary::tr("today");
    return entry.daysAgo == 1 ? Diary::tr("yesterday") : Diary::tr("%1 days ago").arg(entry.daysAgo);
}
