#pragma once

#include <QJsonObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace zenvor::sandbox {

enum class Presence { Required, Optional };

/// Reads one JSON object key by key and writes down each key that is missing, null, of the wrong type or
/// not known. A reader gives nothing for a key it complained about.
class FieldReader
{
public:
    /// \a prefix stands before each key in the texts ("device."). \a deviations must outlive the reader.
    FieldReader(QJsonObject object, QString prefix, QStringList &deviations);

    std::optional<QString> text(QLatin1StringView key, Presence presence = Presence::Required);
    /// A text that must be one of \a allowed.
    std::optional<QString> word(QLatin1StringView key, const QStringList &allowed,
                                Presence presence = Presence::Required);
    std::optional<bool> boolean(QLatin1StringView key, Presence presence = Presence::Required);
    std::optional<double> number(QLatin1StringView key, Presence presence = Presence::Required);
    std::optional<qint64> integer(QLatin1StringView key, Presence presence = Presence::Required);
    std::optional<QJsonObject> object(QLatin1StringView key, Presence presence = Presence::Required);
    std::optional<QStringList> texts(QLatin1StringView key, Presence presence = Presence::Required);
    std::optional<QList<qint64>> integers(QLatin1StringView key, Presence presence = Presence::Required);
    /// The value as it is; what it may be is the caller's business.
    std::optional<QJsonValue> value(QLatin1StringView key, Presence presence = Presence::Required);

    /// To be called last: every key that was not asked for.
    void nameUnknownKeys();
    /// Writes down "prefix.key what".
    void complain(QLatin1StringView key, const QString &what);

private:
    std::optional<QJsonValue> typed(QLatin1StringView key, Presence presence, QJsonValue::Type type,
                                    const QString &typeName);

    QJsonObject m_object;
    QString m_prefix;
    QStringList &m_deviations;
    QSet<QString> m_known;
};

} // namespace zenvor::sandbox
