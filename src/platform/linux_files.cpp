#include "platform/linux_files.h"

#include <algorithm>
#include <array>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array placeholders{
    "Default string"_L1,
    "INVALID"_L1,
    "N/A"_L1,
    "None"_L1,
    "Not Applicable"_L1,
    "Not Specified"_L1,
    "O.E.M."_L1,
    "OEM"_L1,
    "Product Name"_L1,
    "System Name"_L1,
    "System Product Name"_L1,
    "To Be Filled By O.E.M."_L1,
    "To Be Filled By O.E.M"_L1,
    "Type1ProductConfigId"_L1,
    "Undefined"_L1,
    "Unknown"_L1,
};

bool isEscapedBetweenDoubleQuotes(char c)
{
    return c == '"' || c == '\\' || c == '$' || c == '`';
}

std::optional<QString> unquotedDouble(QByteArrayView value)
{
    QByteArray result;
    for (qsizetype i = 1; i < value.size(); ++i) {
        char c = value[i];
        if (c == '"')
            return i == value.size() - 1 ? std::optional(QString::fromUtf8(result)) : std::nullopt;
        if (c == '\\' && i + 1 < value.size() && isEscapedBetweenDoubleQuotes(value[i + 1]))
            c = value[++i];
        result += c;
    }
    return std::nullopt; // the quote is never closed
}

std::optional<QString> unquotedSingle(QByteArrayView value)
{
    if (value.indexOf('\'', 1) != value.size() - 1)
        return std::nullopt;
    return QString::fromUtf8(value.sliced(1, value.size() - 2));
}

std::optional<QString> unquoted(QByteArrayView value)
{
    if (value.startsWith('"'))
        return unquotedDouble(value);
    if (value.startsWith('\''))
        return unquotedSingle(value);
    return QString::fromUtf8(value);
}

} // namespace

OsRelease parseOsRelease(QByteArrayView text)
{
    OsRelease result;
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf('\n');
        const QByteArrayView line = (end < 0 ? text : text.first(end)).trimmed();
        text = end < 0 ? QByteArrayView() : text.sliced(end + 1);

        const qsizetype equals = line.indexOf('=');
        if (equals < 0)
            continue;
        const QByteArrayView key = line.first(equals);
        const auto value = unquoted(line.sliced(equals + 1));
        if (!value)
            continue;
        if (key == "NAME" && !value->isEmpty())
            result.name = *value;
        else if (key == "VERSION_ID")
            result.versionId = *value;
    }
    return result;
}

std::optional<QString> parseProductName(QByteArrayView text)
{
    QString name = QString::fromUtf8(text).trimmed();
    const auto isName = [&name](QLatin1StringView placeholder) {
        return name.compare(placeholder, Qt::CaseInsensitive) == 0;
    };
    if (name.isEmpty() || std::any_of(placeholders.begin(), placeholders.end(), isName))
        return std::nullopt;
    return name;
}

} // namespace zenvor
