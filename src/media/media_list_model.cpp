#include "media/media_list_model.h"

#include <QFileInfo>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

enum Role { NameRole = Qt::UserRole, IsFolderRole, IsVideoRole, ThumbnailRole, SelectionRole };

} // namespace

MediaListModel::MediaListModel(int selectionLimit) : m_selectionLimit(selectionLimit)
{
}

int MediaListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant MediaListModel::data(const QModelIndex &index, int role) const
{
    const auto *found = entry(index.row());
    if (!found)
        return {};
    switch (role) {
    case NameRole:
        return QFileInfo(found->path).fileName();
    case IsFolderRole:
        return found->isFolder;
    case IsVideoRole:
        return found->isVideo;
    case ThumbnailRole:
        return found->isFolder ? QString() : thumbnailUrl(*found);
    case SelectionRole:
        return int(m_selected.indexOf(found->path)) + 1;
    default:
        return {};
    }
}

QHash<int, QByteArray> MediaListModel::roleNames() const
{
    return {{NameRole, "name"_ba},
            {IsFolderRole, "isFolder"_ba},
            {IsVideoRole, "isVideo"_ba},
            {ThumbnailRole, "thumbnail"_ba},
            {SelectionRole, "selection"_ba}};
}

void MediaListModel::setEntries(QList<MediaEntry> entries)
{
    beginResetModel();
    m_entries = std::move(entries);
    endResetModel();
}

const MediaEntry *MediaListModel::entry(int row) const
{
    return row >= 0 && row < m_entries.size() ? &m_entries.at(row) : nullptr;
}

void MediaListModel::toggle(int row)
{
    const auto *chosen = entry(row);
    if (!chosen || chosen->isFolder)
        return;
    if (m_selected.removeAll(chosen->path) == 0) {
        if (m_selectionLimit == 1)
            m_selected.clear();
        if (m_selected.size() >= m_selectionLimit)
            return;
        m_selected.append(chosen->path);
    }
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {SelectionRole}); // those behind it have moved up
}

// In letters that mean nothing in a URL. With its time, so that a file that has changed gets a new picture.
QString thumbnailUrl(const MediaEntry &entry)
{
    const auto path =
        entry.path.toUtf8().toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
    return u"image://zenvor-media/%1/%2"_s.arg(entry.modified.toMSecsSinceEpoch())
        .arg(QLatin1StringView(path));
}

QString thumbnailPath(const QString &id)
{
    return QString::fromUtf8(
        QByteArray::fromBase64(id.section(u'/', 1).toLatin1(), QByteArray::Base64UrlEncoding));
}

} // namespace zenvor
