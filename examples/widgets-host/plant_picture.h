#pragma once

#include "diary.h"

#include <QWidget>

class QPainter;

/// A plant in its pot, before a ground of its own colour.
void paintPlant(QPainter &painter, const QRectF &area, const Plant &plant);

/// The same as a widget.
class PlantPicture : public QWidget
{
public:
    explicit PlantPicture(QWidget *parent = nullptr);

    void setPlant(const Plant &plant);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Plant m_plant;
};
