#include "platform/user_defaults.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QUrl>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

// No honest value comes near it: a larger file is somebody else's, or damaged.
constexpr qint64 maxSize = 1024 * 1024;
constexpr int staleAfterSeconds = 3600;
constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;

// One component of a path, whatever the text holds.
QString fileName(const QString &text)
{
    const auto encoded = QString::fromLatin1(QUrl::toPercentEncoding(text));
    return encoded.startsWith(u'.') ? "%2E"_L1 + encoded.mid(1) : encoded;
}

// What a process left that was ended while it wrote.
void removeLeftovers(const QDir &folder, const QString &name)
{
    const auto oldest = QDateTime::currentDateTimeUtc().addSecs(-staleAfterSeconds);
    for (const auto &file : folder.entryInfoList({name + ".??????"_L1}, QDir::Files)) {
        if (file.lastModified() < oldest)
            QFile::remove(file.filePath());
    }
}

} // namespace

UserDefaults UserDefaults::forApplication(const QString &identifier)
{
    const auto base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (identifier.isEmpty() || base.isEmpty())
        return UserDefaults(QString());
    return UserDefaults(base + "/zenvor/"_L1 + fileName(identifier));
}

UserDefaults::UserDefaults(QString folder) : m_folder(std::move(folder))
{
}

QString UserDefaults::path(const QString &key) const
{
    return m_folder + u'/' + fileName(key);
}

std::optional<QByteArray> UserDefaults::data(const QString &key) const
{
    QFile file(path(key));
    if (m_folder.isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    auto value = file.read(maxSize + 1);
    if (file.error() != QFileDevice::NoError || value.size() > maxSize)
        return std::nullopt;
    return value;
}

void UserDefaults::setData(const QString &key, const QByteArray &value) const
{
    if (m_folder.isEmpty() || !QDir().mkpath(m_folder))
        return;
    removeLeftovers(QDir(m_folder), fileName(key));
    QSaveFile file(path(key));
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(ownerOnly);
    file.write(value);
    file.commit();
}

} // namespace zenvor
