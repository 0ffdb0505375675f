#include "platform/vendor_identifier.h"

#include <QMessageAuthenticationCode>
#include <QUuid>

#include <algorithm>

namespace zenvor {

namespace {

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

// The systems write the same number with and without hyphens and in either case.
QByteArray digitsOf(QByteArrayView machineId)
{
    return machineId.trimmed().toByteArray().toLower().replace('-', "");
}

bool identifiesAMachine(const QByteArray &digits)
{
    return std::all_of(digits.begin(), digits.end(), isHexDigit)
        && std::any_of(digits.begin(), digits.end(), [](char c) { return c != '0'; });
}

} // namespace

std::optional<QString> vendorIdentifier(QByteArrayView machineId, QStringView key)
{
    constexpr qsizetype uuidSize = 16;

    const QByteArray digits = digitsOf(machineId);
    if (!identifiesAMachine(digits) || key.trimmed().isEmpty())
        return std::nullopt;

    QByteArray uuid =
        QMessageAuthenticationCode::hash(digits, key.toUtf8(), QCryptographicHash::Sha256).first(uuidSize);
    // The bits that make it a well-formed UUID: version 4, whose other bits mean nothing, and the
    // standard variant.
    uuid[6] = static_cast<char>((uuid[6] & 0x0f) | 0x40);
    uuid[8] = static_cast<char>((uuid[8] & 0x3f) | 0x80);
    return QUuid::fromRfc4122(uuid).toString(QUuid::WithoutBraces).toUpper();
}

} // namespace zenvor
