#include "sandbox/field_reader.h"

#include <QJsonArray>

#include <limits>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

std::optional<qint64> wholeNumber(const QJsonValue &value)
{
    constexpr qint64 notWhole = std::numeric_limits<qint64>::min();
    const qint64 number = value.toInteger(notWhole);
    return number == notWhole ? std::nullopt : std::optional(number);
}

} // namespace

FieldReader::FieldReader(QJsonObject object, QString prefix, QStringList &deviations)
    : m_object(std::move(object))
    , m_prefix(std::move(prefix))
    , m_deviations(deviations)
{
}

void FieldReader::complain(QLatin1StringView key, const QString &what)
{
    m_deviations << m_prefix + key + u' ' + what;
}

std::optional<QJsonValue> FieldReader::value(QLatin1StringView key, Presence presence)
{
    m_known.insert(key);
    const auto found = m_object.constFind(key);
    if (found == m_object.constEnd()) {
        if (presence == Presence::Required)
            complain(key, u"is missing"_s);
        return {};
    }
    if (found->isNull()) {
        complain(key, u"is null; an absent value must be left out"_s);
        return {};
    }
    return *found;
}

std::optional<QJsonValue> FieldReader::typed(QLatin1StringView key, Presence presence, QJsonValue::Type type,
                                             const QString &typeName)
{
    const auto found = value(key, presence);
    if (found && found->type() != type) {
        complain(key, u"must be "_s + typeName);
        return {};
    }
    return found;
}

std::optional<QString> FieldReader::text(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::String, u"a string"_s);
    return found ? std::optional(found->toString()) : std::nullopt;
}

std::optional<QString> FieldReader::word(QLatin1StringView key, const QStringList &allowed, Presence presence)
{
    const auto found = text(key, presence);
    if (found && !allowed.contains(*found)) {
        complain(key, u"must be one of "_s + allowed.join(u", "_s));
        return {};
    }
    return found;
}

std::optional<bool> FieldReader::boolean(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::Bool, u"true or false"_s);
    return found ? std::optional(found->toBool()) : std::nullopt;
}

std::optional<double> FieldReader::number(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::Double, u"a number"_s);
    return found ? std::optional(found->toDouble()) : std::nullopt;
}

std::optional<qint64> FieldReader::integer(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::Double, u"an integer"_s);
    const auto whole = found ? wholeNumber(*found) : std::nullopt;
    if (found && !whole)
        complain(key, u"must be an integer"_s);
    return whole;
}

std::optional<QJsonObject> FieldReader::object(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::Object, u"an object"_s);
    return found ? std::optional(found->toObject()) : std::nullopt;
}

std::optional<QStringList> FieldReader::texts(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::Array, u"an array of strings"_s);
    if (!found)
        return {};
    QStringList strings;
    for (const QJsonValue item : found->toArray()) {
        if (!item.isString()) {
            complain(key, u"must be an array of strings"_s);
            return {};
        }
        strings << item.toString();
    }
    return strings;
}

std::optional<QList<qint64>> FieldReader::integers(QLatin1StringView key, Presence presence)
{
    const auto found = typed(key, presence, QJsonValue::Array, u"an array of integers"_s);
    if (!found)
        return {};
    QList<qint64> numbers;
    for (const QJsonValue item : found->toArray()) {
        const auto whole = wholeNumber(item);
        if (!whole) {
            complain(key, u"must be an array of integers"_s);
            return {};
        }
        numbers << *whole;
    }
    return numbers;
}

void FieldReader::nameUnknownKeys()
{
    const QStringList keys = m_object.keys();
    for (const QString &key : keys) {
        if (!m_known.contains(key))
            m_deviations << m_prefix + key + u" is not a known key"_s;
    }
}

} // namespace zenvor::sandbox
