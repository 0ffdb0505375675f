#include "platform/json.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

QJsonObject parseObject(const QByteArray &text)
{
    const auto document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        throw JsonDecodingError(u"The text is not a JSON object."_s);
    return document.object();
}

JsonDecodingError wrongMember(QLatin1StringView key)
{
    return JsonDecodingError("The member \""_L1 + key + "\" is missing or has the wrong type."_L1);
}

QString wellFormed(const QString &text)
{
    if (text.isValidUtf16())
        return text;
    const auto characters = text.toUcs4();
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()), characters.size());
}

} // namespace

JsonReader::JsonReader(const QByteArray &text) : m_object(parseObject(text))
{
}

QJsonValue JsonReader::required(QLatin1StringView key, QJsonValue::Type type) const
{
    const auto value = m_object.value(key);
    if (value.type() != type)
        throw wrongMember(key);
    return value;
}

QString JsonReader::string(QLatin1StringView key) const
{
    return required(key, QJsonValue::String).toString();
}

bool JsonReader::boolean(QLatin1StringView key) const
{
    return required(key, QJsonValue::Bool).toBool();
}

qint64 JsonReader::integer(QLatin1StringView key) const
{
    const auto value = required(key, QJsonValue::Double);
    // Two defaults that no value equals both: there is no other way to ask whether the number fits.
    const auto integer = value.toInteger(0);
    if (integer == 0 && value.toInteger(1) != 0)
        throw wrongMember(key);
    return integer;
}

double JsonReader::number(QLatin1StringView key) const
{
    return required(key, QJsonValue::Double).toDouble();
}

std::optional<QMap<QString, QString>> JsonReader::optionalStrings(QLatin1StringView key) const
{
    const auto value = m_object.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    if (!value.isObject())
        throw wrongMember(key);
    QMap<QString, QString> strings;
    const auto object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!member.value().isString())
            throw wrongMember(key);
        strings.insert(member.key(), member.value().toString());
    }
    return strings;
}

void JsonWriter::string(QLatin1StringView key, const QString &value)
{
    m_object.insert(key, wellFormed(value));
}

void JsonWriter::string(QLatin1StringView key, const std::optional<QString> &value)
{
    if (value)
        string(key, *value);
}

void JsonWriter::strings(QLatin1StringView key, const std::optional<QStringList> &value)
{
    if (!value)
        return;
    QJsonArray array;
    for (const auto &element : *value)
        array.append(wellFormed(element));
    m_object.insert(key, array);
}

void JsonWriter::boolean(QLatin1StringView key, bool value)
{
    m_object.insert(key, value);
}

void JsonWriter::integer(QLatin1StringView key, qint64 value)
{
    m_object.insert(key, value);
}

void JsonWriter::number(QLatin1StringView key, double value)
{
    if (!std::isfinite(value))
        throw JsonEncodingError("The number \""_L1 + key + "\" is not finite."_L1);
    m_object.insert(key, value);
}

void JsonWriter::object(QLatin1StringView key, const JsonWriter &value)
{
    m_object.insert(key, value.m_object);
}

QByteArray JsonWriter::toJson() const
{
    return QJsonDocument(m_object).toJson(QJsonDocument::Compact);
}

} // namespace zenvor
