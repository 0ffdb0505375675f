#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QString>

struct Plant
{
    enum class Shape { Fan, Column, Trailing };

    QString name;
    QString species;
    QString place;
    int waterEveryDays = 7;
    Shape shape = Shape::Fan;
    QColor leaves;
    QColor pot;
};

/// Something that was done for a plant.
struct Entry
{
    enum class Care { Watered, Fed, Repotted, Pruned };

    qsizetype plant = 0; ///< index among the plants
    int daysAgo = 0;
    Care care = Care::Watered;
    QString note;
};

/// All that the app knows. A real app would keep it in a file.
class Diary : public QObject
{
    Q_OBJECT

public:
    Diary();

    const QList<Plant> &plants() const { return m_plants; }
    /// The newest first.
    const QList<Entry> &entries() const { return m_entries; }
    void add(const Entry &entry);

    /// As "Water tomorrow".
    QString nextWatering(qsizetype plant) const;

Q_SIGNALS:
    void changed();

private:
    const QList<Plant> m_plants;
    QList<Entry> m_entries;
};

QString nameOf(Entry::Care care);
/// As "3 days ago".
QString whenWas(const Entry &entry);
