#pragma once

#include "media/media_folder.h"

#include <QAbstractListModel>
#include <QStringList>

namespace zenvor {

/// What a folder has to choose from, and what of it is chosen. What is chosen in one folder stays so in
/// others. Main thread.
class MediaListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// At most \a selectionLimit can be chosen.
    explicit MediaListModel(int selectionLimit);

    int rowCount(const QModelIndex &parent = {}) const override;
    /// name, isFolder, isVideo; thumbnail, the URL of a picture of it; and selection, its place among what is
    /// chosen, from 1, or 0.
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setEntries(QList<MediaEntry> entries);
    /// Null if there is none in this row.
    const MediaEntry *entry(int row) const;

    /// Chooses what is in \a row, or not any more. Where only one can be chosen it takes the place of
    /// another; nothing otherwise if all are.
    void toggle(int row);
    /// Paths, in the order in which they were chosen.
    const QStringList &selected() const { return m_selected; }

private:
    const int m_selectionLimit;
    QList<MediaEntry> m_entries;
    QStringList m_selected;
};

/// The URL under which the screens get a picture of \a entry, and the path that such a URL is for.
QString thumbnailUrl(const MediaEntry &entry);
QString thumbnailPath(const QString &id);

} // namespace zenvor
