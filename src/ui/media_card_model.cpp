#include "ui/media_card_model.h"

#include "ui/media_card.h"

#include <utility>

namespace zenvor {

int MediaCardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_cards.size());
}

QVariant MediaCardModel::data(const QModelIndex &index, int role) const
{
    return role == Qt::UserRole ? QVariant::fromValue(m_cards.value(index.row())) : QVariant();
}

QHash<int, QByteArray> MediaCardModel::roleNames() const
{
    return {{Qt::UserRole, QByteArrayLiteral("card")}};
}

void MediaCardModel::append(MediaCard *card)
{
    const auto row = rowCount();
    beginInsertRows({}, row, row);
    m_cards.append(card);
    endInsertRows();
}

MediaCard *MediaCardModel::take(qsizetype row)
{
    beginRemoveRows({}, int(row), int(row));
    auto *card = m_cards.takeAt(row);
    endRemoveRows();
    return card;
}

MediaCard *MediaCardModel::replace(qsizetype row, MediaCard *card)
{
    auto *replaced = std::exchange(m_cards[row], card);
    Q_EMIT dataChanged(index(int(row)), index(int(row)));
    return replaced;
}

} // namespace zenvor
