#pragma once

#include <QAbstractListModel>

namespace zenvor {

class MediaCard;

/// The cards of the strip, in their order. Those that stay keep their views, and what has the keyboard in
/// them. Main thread.
class MediaCardModel : public QAbstractListModel
{
    Q_OBJECT

public:
    int rowCount(const QModelIndex &parent = {}) const override;
    /// card.
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<MediaCard *> &cards() const { return m_cards; }
    void append(MediaCard *card);
    /// Takes the card there out, with its view, and gives it to the caller.
    MediaCard *take(qsizetype row);
    MediaCard *replace(qsizetype row, MediaCard *card);

private:
    QList<MediaCard *> m_cards;
};

} // namespace zenvor
