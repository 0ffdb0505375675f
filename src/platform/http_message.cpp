#include "platform/http_message.h"

#include <algorithm>

namespace zenvor {
namespace {

bool isSameName(QByteArrayView a, QByteArrayView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool isTokenCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
        || QByteArrayView("!#$%&'*+-.^_`|~").contains(c);
}

bool isValueCharacter(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte == '\t' || (byte >= 0x20 && byte != 0x7f);
}

} // namespace

void HttpHeaders::set(QByteArray name, QByteArray value)
{
    m_fields.removeIf([&name](const Field &field) { return isSameName(field.first, name); });
    append(std::move(name), std::move(value));
}

std::optional<QByteArray> HttpHeaders::value(QByteArrayView name) const
{
    for (const auto &[fieldName, fieldValue] : m_fields) {
        if (isSameName(fieldName, name))
            return fieldValue;
    }
    return std::nullopt;
}

bool HttpHeaders::isWellFormed(QByteArrayView name, QByteArrayView value)
{
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), isTokenCharacter)
        && std::all_of(value.begin(), value.end(), isValueCharacter);
}

} // namespace zenvor
