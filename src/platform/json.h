#pragma once

#include "platform/error.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <optional>

namespace zenvor {

/// A value that is missing, null or of another type than the reader was asked for, or a text that is
/// no JSON object.
class JsonDecodingError final : public Error
{
public:
    explicit JsonDecodingError(QString description) : m_description(std::move(description)) {}
    QString localizedDescription() const override { return m_description; }

private:
    QString m_description;
};

/// A value that JSON cannot write.
class JsonEncodingError final : public Error
{
public:
    explicit JsonEncodingError(QString description) : m_description(std::move(description)) {}
    QString localizedDescription() const override { return m_description; }

private:
    QString m_description;
};

/// Strict reading of one JSON object: a number is no Boolean, null is no string, and members that
/// nobody asks for do not matter. Every reader throws JsonDecodingError.
class JsonReader
{
public:
    explicit JsonReader(const QByteArray &text);
    explicit JsonReader(QJsonObject object) : m_object(std::move(object)) {}

    QString string(QLatin1StringView key) const;
    bool boolean(QLatin1StringView key) const;
    /// A number without a fraction that fits 64 bits.
    qint64 integer(QLatin1StringView key) const;
    double number(QLatin1StringView key) const;
    /// An object whose members are all strings; nothing where the member is missing or null.
    std::optional<QMap<QString, QString>> optionalStrings(QLatin1StringView key) const;

private:
    QJsonValue required(QLatin1StringView key, QJsonValue::Type type) const;

    QJsonObject m_object;
};

/// Writing of one JSON object. An optional member that is absent is left out; null is never written.
class JsonWriter
{
public:
    /// Half a surrogate pair, as a cut emoji leaves it, becomes the replacement character: no
    /// receiver could read it.
    void string(QLatin1StringView key, const QString &value);
    void string(QLatin1StringView key, const std::optional<QString> &value);
    void strings(QLatin1StringView key, const std::optional<QStringList> &value);
    void boolean(QLatin1StringView key, bool value);
    void integer(QLatin1StringView key, qint64 value);
    /// Throws JsonEncodingError for infinity and what is not a number.
    void number(QLatin1StringView key, double value);
    void object(QLatin1StringView key, const JsonWriter &value);

    const QJsonObject &toObject() const { return m_object; }
    /// Compact UTF-8.
    QByteArray toJson() const;

private:
    QJsonObject m_object;
};

} // namespace zenvor
