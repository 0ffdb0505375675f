#include "fuzz_input.h"
#include "platform/linux_files.h"
#include "platform/vendor_identifier.h"

#include <QUuid>

using namespace zenvor;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

/// \a text between double quotes, as a shell needs it.
QByteArray quoted(QByteArrayView text)
{
    QByteArray result;
    for (const char c : text) {
        if (c == '"' || c == '\\' || c == '$' || c == '`')
            result += '\\';
        result += c;
    }
    return '"' + result + '"';
}

void readOsRelease(const QByteArray &text)
{
    const auto release = parseOsRelease(text);
    require(!release.name.isEmpty(), "a system always has a name");
    require(!release.name.contains(u'\n') && !release.versionId.contains(u'\n'), "a value is one line");
    require(parseOsRelease(text + "\nNAME='unfinished\n=\n#").name == release.name,
            "what a shell would not accept changes nothing");

    const auto value = QByteArray(text).replace('\n', ' ');
    const auto after = parseOsRelease(text + "\nVERSION_ID=" + quoted(value) + '\n');
    require(after.versionId == QString::fromUtf8(value), "the last assignment counts, and quoting is undone");
    require(after.name == release.name, "one value does not change the other");
}

void readProductName(const QByteArray &text)
{
    const auto name = parseProductName(text);
    if (!name)
        return;
    require(!name->isEmpty() && *name == name->trimmed(), "a model is trimmed and not empty");
    // A mark of the byte order at the start is no part of the text.
    require(name->startsWith(QChar::ByteOrderMark) || parseProductName(name->toUtf8()) == name,
            "a model that is read again is the same");
}

void readMachineId(const QByteArray &text)
{
    const auto key = u"example.com"_s;
    const auto identifier = vendorIdentifier(text, key);
    if (!identifier)
        return;
    const QUuid uuid(*identifier);
    require(identifier->size() == 36 && uuid.variant() == QUuid::DCE && uuid.version() == QUuid::Random,
            "the identifier is a UUID");
    require(vendorIdentifier(' ' + text.toUpper() + '\n', key) == identifier,
            "letter case and white space make no other machine");
    require(vendorIdentifier(text, u"example.org"_s) != identifier, "each vendor sees another machine");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto text = bytesOf(data, size);
    readOsRelease(text);
    readProductName(text);
    readMachineId(text);
    return 0;
}
