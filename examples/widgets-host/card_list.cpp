#include "card_list.h"

#include "look.h"
#include "plant_picture.h"

#include <QPainter>
#include <QStyle>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

enum Role { TextRole = Qt::UserRole, PlantRole };

constexpr int cardHeight = look::tileSize + 2 * look::gap;

class CardDelegate final : public QStyledItemDelegate
{
public:
    explicit CardDelegate(CardList *list) : QStyledItemDelegate(list), m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return m_list->gridSize();
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QPalette &palette = option.palette;
        const QRect card = option.rect.adjusted(0, 0, -look::gap, -look::gap);
        const bool isFocused = option.state.testFlag(QStyle::State_HasFocus)
            && option.state.testFlag(QStyle::State_KeyboardFocusChange);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(palette.color(isFocused ? QPalette::Highlight : QPalette::Midlight));
        painter->setBrush(palette.color(option.state.testFlag(QStyle::State_MouseOver) ? QPalette::Button
                                                                                       : QPalette::Base));
        painter->drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), look::radius, look::radius);

        const QRect inner = card.adjusted(look::smallGap, look::smallGap, -look::gap, -look::smallGap);
        QRect picture = inner;
        picture.setWidth(inner.height());
        paintPlant(*painter, picture, index.data(PlantRole).value<Plant>());

        const QRect lines = inner.adjusted(picture.width() + look::gap, look::gap, 0, -look::gap);
        const auto write = [&](const QString &text, QPalette::ColorRole role, int size, QFont::Weight weight,
                               Qt::Alignment alignment) {
            painter->setFont(look::font(size, weight));
            painter->setPen(palette.color(role));
            painter->drawText(lines, int(alignment | Qt::TextSingleLine),
                              painter->fontMetrics().elidedText(text, Qt::ElideRight, lines.width()));
        };
        write(index.data().toString(), QPalette::Text, look::textSize, QFont::DemiBold, Qt::AlignTop);
        write(index.data(TextRole).toString(), QPalette::PlaceholderText, look::smallSize, QFont::Normal,
              Qt::AlignBottom);
        painter->restore();
    }

private:
    const CardList *const m_list;
};

} // namespace

Q_DECLARE_METATYPE(Plant)

CardList::CardList(QWidget *parent) : QListView(parent)
{
    setModel(&m_model);
    setItemDelegate(new CardDelegate(this));
    setFlow(LeftToRight);
    setWrapping(true);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setEditTriggers(NoEditTriggers);
    setMouseTracking(true); // for the card under the pointer
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setAutoFillBackground(true);
    setViewportMargins(2 * look::gap, look::margin, 0, 0);
    const auto choose = [this](const QModelIndex &index) {
        Q_EMIT chosen(index.row());
    };
    connect(this, &QListView::clicked, this, choose);
    connect(this, &QListView::activated, this, choose); // by the keyboard
}

void CardList::add(const Plant &plant, const QString &title, const QString &text)
{
    auto *item = new QStandardItem(title);
    item->setData(text, TextRole);
    item->setData(QVariant::fromValue(plant), PlantRole);
    item->setData(title + u", "_s + text, Qt::AccessibleTextRole);
    m_model.appendRow(item);
}

void CardList::resizeEvent(QResizeEvent *event)
{
    QListView::resizeEvent(event);
    // The view keeps room for a scroll bar, whether there is one or not, and wraps what fills a line.
    const int room =
        maximumViewportSize().width() - style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) - 1;
    setGridSize({room / std::max(1, width() / look::columnWidth), cardHeight + look::gap});
    doItemsLayout(); // at once: what lies there is pressed, and its picture is taken
}
