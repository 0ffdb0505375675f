#pragma once

#include "diary.h"

#include <QListView>
#include <QStandardItemModel>

/// A plant with two lines beside it, for each thing in a list: in as many columns as there is room for.
class CardList : public QListView
{
    Q_OBJECT

public:
    explicit CardList(QWidget *parent = nullptr);

    void clear() { m_model.clear(); }
    void add(const Plant &plant, const QString &title, const QString &text);

Q_SIGNALS:
    void chosen(int row);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QStandardItemModel m_model;
};
