#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace zenvor {

/// A small store of byte strings for one application: one file a key, so that nothing is locked and
/// nobody's settings are touched. A value is written whole or not at all, whatever ends the process; of
/// two writers the last one wins. Every call reads or writes the disk: never on the main thread.
class UserDefaults
{
public:
    /// The store that every process finds that names the same application. Without an identifier
    /// nothing is kept.
    static UserDefaults forApplication(const QString &identifier);
    /// A store in a folder of its own, which is made by the first write.
    explicit UserDefaults(QString folder);

    /// Nothing if there is no such value, or it cannot be read.
    std::optional<QByteArray> data(const QString &key) const;
    /// Replaces the value. A disk that is full or must not be written to leaves the old one.
    void setData(const QString &key, const QByteArray &value) const;

private:
    QString path(const QString &key) const;

    QString m_folder;
};

} // namespace zenvor
