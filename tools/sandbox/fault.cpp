#include "sandbox/fault.h"

#include "sandbox/field_reader.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

using Place = Fault::Place;

const QStringList placeNames = {u"beforeHeaders"_s, u"inHeaders"_s, u"inBody"_s};

int smallInteger(FieldReader &reader, QLatin1StringView key, int lowest, int fallback)
{
    const auto number = reader.integer(key, Presence::Optional);
    if (number && (*number < lowest || *number > std::numeric_limits<int>::max())) {
        reader.complain(key, u"must be %1 or more"_s.arg(lowest));
        return fallback;
    }
    return number ? static_cast<int>(*number) : fallback;
}

std::optional<qint64> size(FieldReader &reader, QLatin1StringView key)
{
    const auto number = reader.integer(key, Presence::Optional);
    if (number && *number < 0) {
        reader.complain(key, u"must be 0 or more"_s);
        return {};
    }
    return number;
}

bool flag(FieldReader &reader, QLatin1StringView key)
{
    return reader.boolean(key, Presence::Optional).value_or(false);
}

Place place(FieldReader &reader, QLatin1StringView key)
{
    const auto name = reader.word(key, placeNames, Presence::Optional);
    return name ? static_cast<Place>(placeNames.indexOf(*name) + 1) : Place::Nowhere;
}

bool isHeaderText(const QString &text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() >= 0x20 && c.unicode() < 0x7f; });
}

void readHeaders(FieldReader &reader, Fault &fault)
{
    const QJsonObject object = reader.object("headers"_L1, Presence::Optional).value_or(QJsonObject());
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it->isNull())
            fault.withoutHeaders << it.key().toUtf8();
        else if (it.key().isEmpty() || !it->isString() || !isHeaderText(it.key())
                 || !isHeaderText(it->toString()))
            reader.complain("headers"_L1,
                            u"must hold printable ASCII strings, or null for a header to leave out"_s);
        else
            fault.headers.append({it.key().toLatin1(), it->toString().toLatin1()});
    }
}

std::optional<QByteArray> body(FieldReader &reader)
{
    const auto text = reader.text("body"_L1, Presence::Optional);
    const auto encoded = reader.text("bodyBase64"_L1, Presence::Optional);
    if (text && encoded)
        reader.complain("bodyBase64"_L1, u"and body exclude each other"_s);
    if (!encoded)
        return text ? std::optional(text->toUtf8()) : std::nullopt;
    const auto decoded =
        QByteArray::fromBase64Encoding(encoded->toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        reader.complain("bodyBase64"_L1, u"is not base64"_s);
    return decoded ? std::optional(*decoded) : std::nullopt;
}

std::optional<QByteArray> garbage(FieldReader &reader)
{
    const auto value = reader.value("garbage"_L1, Presence::Optional);
    if (!value || value->isBool())
        return value && value->toBool() ? std::optional("\x15\x03\x01 this is no HTTP\r\n\r\n\xff\xfe"_ba)
                                        : std::nullopt;
    if (!value->isString())
        reader.complain("garbage"_L1, u"must be true or a string"_s);
    return value->toString().toUtf8();
}

QList<int> informational(FieldReader &reader)
{
    QList<int> statuses;
    const auto numbers = reader.integers("informational"_L1, Presence::Optional);
    for (const qint64 status : numbers.value_or(QList<qint64>())) {
        if (status < 100 || status > 199 || status == 101)
            reader.complain("informational"_L1, u"must hold statuses from 100 to 199, without 101"_s);
        else
            statuses << static_cast<int>(status);
    }
    return statuses;
}

void readAnswer(FieldReader &reader, Fault &fault)
{
    if (const auto status = reader.integer("status"_L1, Presence::Optional)) {
        if (*status != 101 && (*status < 200 || *status > 999))
            reader.complain("status"_L1, u"must be from 200 to 999, or 101"_s);
        fault.status = static_cast<int>(std::clamp<qint64>(*status, 101, 999));
    }
    readHeaders(reader, fault);
    fault.body = body(reader);
    fault.bodySize = size(reader, "bodySize"_L1);
    fault.endless = flag(reader, "endless"_L1);
    fault.redirect = reader.text("redirect"_L1, Presence::Optional).value_or(QString());
    if (!isHeaderText(fault.redirect))
        reader.complain("redirect"_L1, u"must be printable ASCII"_s);
    fault.padding = size(reader, "padding"_L1).value_or(0);
    fault.garbage = garbage(reader);
    fault.gzip = flag(reader, "gzip"_L1);
    fault.handle = reader.boolean("handle"_L1, Presence::Optional);
}

void readSending(FieldReader &reader, Fault &fault)
{
    fault.informational = informational(reader);
    fault.delayMs = smallInteger(reader, "delayMs"_L1, 0, 0);
    fault.dripMs = smallInteger(reader, "dripMs"_L1, 0, 0);
    fault.dripHeaders = flag(reader, "dripHeaders"_L1);
    fault.chunked = flag(reader, "chunked"_L1);
    fault.badChunk = flag(reader, "badChunk"_L1);
    fault.contentLength = size(reader, "contentLength"_L1);
    fault.stall = place(reader, "stall"_L1);
    fault.cut = place(reader, "cut"_L1);
    fault.reset = place(reader, "reset"_L1);
    fault.when = reader.word("when"_L1, {u"head"_s, u"body"_s}, Presence::Optional) == u"head"_s
        ? Fault::When::Head
        : Fault::When::Body;
    fault.stopReading = flag(reader, "stopReading"_L1);
}

void readContradictions(const Fault &fault, QStringList &mistakes)
{
    const auto count = [](auto... is) {
        return (0 + ... + static_cast<int>(is));
    };
    if (count(fault.stall != Place::Nowhere, fault.cut != Place::Nowhere, fault.reset != Place::Nowhere) > 1)
        mistakes << u"stall, cut and reset exclude each other"_s;
    if (count(fault.body.has_value(), fault.bodySize.has_value(), fault.endless) > 1)
        mistakes << u"body, bodySize and endless exclude each other"_s;
    if (fault.padding > 0 && (fault.bodySize || fault.endless))
        mistakes << u"padding goes into a JSON object, so neither bodySize nor endless goes with it"_s;
    if (fault.handle.value_or(false) && (fault.when == Fault::When::Head || fault.stopReading))
        mistakes
            << u"handle needs the request's body, so neither \"when\": \"head\" nor stopReading goes with it"_s;
    if (fault.contentLength && (fault.chunked || fault.badChunk))
        mistakes << u"contentLength and chunks exclude each other"_s;
    if (!fault.path.isEmpty() && !fault.path.startsWith(u'/'))
        mistakes << u"path must begin with a slash"_s;
}

} // namespace

bool Fault::matches(const QByteArray &requestMethod, const QString &requestPath) const
{
    if (!method.isEmpty() && method != requestMethod)
        return false;
    if (path.isEmpty())
        return requestPath.startsWith("/v1/sdk/"_L1) || requestPath.startsWith("/storage/"_L1);
    return requestPath.startsWith(path);
}

bool Fault::leavesAnswerAlone() const
{
    const bool stopsEarly = stall != Place::Nowhere || cut != Place::Nowhere || reset != Place::Nowhere;
    return !status && !body && !bodySize && !endless && redirect.isEmpty() && !garbage && !stopsEarly
        && !stopReading && when == When::Body;
}

std::optional<Fault> parseFault(const QJsonObject &object, QString *error)
{
    QStringList mistakes;
    FieldReader reader(object, {}, mistakes);
    Fault fault;
    fault.method = reader.text("method"_L1, Presence::Optional).value_or(QString()).toLatin1();
    fault.path = reader.text("path"_L1, Presence::Optional).value_or(QString());
    fault.skip = smallInteger(reader, "skip"_L1, 0, 0);
    fault.times = smallInteger(reader, "times"_L1, 0, 1);
    readAnswer(reader, fault);
    readSending(reader, fault);
    reader.nameUnknownKeys();
    readContradictions(fault, mistakes);
    if (mistakes.isEmpty())
        return fault;
    *error = u"Not a fault: "_s + mistakes.join(u"; "_s);
    return {};
}

std::optional<QList<Fault>> parseFaults(const QByteArray &json, QString *error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = u"Not JSON: %1 at byte %2"_s.arg(parseError.errorString()).arg(parseError.offset);
        return {};
    }
    const QJsonArray items = document.isArray() ? document.array() : QJsonArray{document.object()};
    QList<Fault> faults;
    for (const QJsonValue item : items) {
        if (!item.isObject()) {
            *error = u"Not a fault: an object is expected"_s;
            return {};
        }
        const auto fault = parseFault(item.toObject(), error);
        if (!fault)
            return {};
        faults << *fault;
    }
    return faults;
}

QJsonObject faultToJson(const Fault &fault)
{
    QJsonObject object{{u"skip"_s, fault.skip}, {u"times"_s, fault.times}};
    const auto put = [&](QLatin1StringView key, bool isSet, const QJsonValue &value) {
        if (isSet)
            object.insert(key, value);
    };
    const auto placeName = [](Place at) {
        return at == Place::Nowhere ? QString() : placeNames.at(static_cast<int>(at) - 1);
    };
    QJsonObject fields;
    for (const auto &[name, value] : fault.headers)
        fields.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    for (const QByteArray &name : fault.withoutHeaders)
        fields.insert(QString::fromUtf8(name), QJsonValue::Null);
    QJsonArray statuses;
    for (const int status : fault.informational)
        statuses << status;

    put("method"_L1, !fault.method.isEmpty(), QString::fromLatin1(fault.method));
    put("path"_L1, !fault.path.isEmpty(), fault.path);
    put("status"_L1, fault.status.has_value(), fault.status.value_or(0));
    put("headers"_L1, !fields.isEmpty(), fields);
    put("bodyBase64"_L1, fault.body.has_value(),
        QString::fromLatin1(fault.body.value_or(QByteArray()).toBase64()));
    put("bodySize"_L1, fault.bodySize.has_value(), fault.bodySize.value_or(0));
    put("endless"_L1, fault.endless, true);
    put("redirect"_L1, !fault.redirect.isEmpty(), fault.redirect);
    put("padding"_L1, fault.padding > 0, fault.padding);
    put("garbage"_L1, fault.garbage.has_value(), QString::fromUtf8(fault.garbage.value_or(QByteArray())));
    put("gzip"_L1, fault.gzip, true);
    put("handle"_L1, fault.handle.has_value(), fault.handle.value_or(false));
    put("informational"_L1, !statuses.isEmpty(), statuses);
    put("delayMs"_L1, fault.delayMs > 0, fault.delayMs);
    put("dripMs"_L1, fault.dripMs > 0, fault.dripMs);
    put("dripHeaders"_L1, fault.dripHeaders, true);
    put("chunked"_L1, fault.chunked, true);
    put("badChunk"_L1, fault.badChunk, true);
    put("contentLength"_L1, fault.contentLength.has_value(), fault.contentLength.value_or(0));
    put("stall"_L1, fault.stall != Place::Nowhere, placeName(fault.stall));
    put("cut"_L1, fault.cut != Place::Nowhere, placeName(fault.cut));
    put("reset"_L1, fault.reset != Place::Nowhere, placeName(fault.reset));
    put("when"_L1, fault.when == Fault::When::Head, u"head"_s);
    put("stopReading"_L1, fault.stopReading, true);
    return object;
}

} // namespace zenvor::sandbox
