#include "sandbox/protocol.h"

#include "sandbox/field_reader.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QRegularExpression>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype attachmentLimit = 5;

const QStringList screenshotTypes = {u"image/jpeg"_s, u"image/png"_s, u"image/webp"_s};
const QStringList videoTypes = {u"video/mp4"_s, u"video/quicktime"_s, u"video/webm"_s};
const QStringList frequencies = {u"first_time"_s, u"few_times"_s, u"several_times"_s, u"many_times"_s,
                                 u"almost_every_time"_s};

template<typename Record>
std::optional<QJsonObject> parse(const QByteArray &body, Reading<Record> &reading)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError) {
        reading.isJson = false;
        reading.deviations
            << u"the body is not JSON (%1 at byte %2)"_s.arg(error.errorString()).arg(error.offset);
        return {};
    }
    if (!document.isObject()) {
        reading.deviations << u"the body must be a JSON object"_s;
        return {};
    }
    return document.object();
}

bool isTrimmed(const QString &text)
{
    return text == text.trimmed();
}

/// A required string that must be neither empty nor padded.
QString trimmedText(FieldReader &reader, QLatin1StringView key)
{
    const QString text = reader.text(key).value_or(u"-"_s);
    if (text.isEmpty())
        reader.complain(key, u"is empty"_s);
    if (!isTrimmed(text))
        reader.complain(key, u"is not trimmed"_s);
    return text;
}

void readCaller(FieldReader &reader, Caller &caller)
{
    caller.token = reader.text("token"_L1).value_or(QString());
    caller.bundleId = reader.text("bundle_id"_L1).value_or(QString());
}

void readDevice(const QJsonObject &object, QStringList &deviations)
{
    FieldReader reader(object, u"device."_s, deviations);
    for (const auto key :
         {"model"_L1, "machine"_L1, "os_name"_L1, "os_version"_L1, "locale"_L1, "time_zone"_L1})
        reader.text(key);
    for (const auto key : {"screen_width"_L1, "screen_height"_L1}) {
        if (reader.number(key).value_or(0) < 0)
            reader.complain(key, u"is negative"_s);
    }
    reader.word("interface_style"_L1, {u"light"_s, u"dark"_s, u"unspecified"_s});
    reader.text("identifier_for_vendor"_L1, Presence::Optional);
    reader.nameUnknownKeys();
}

QString readApp(const QJsonObject &object, QStringList &deviations)
{
    FieldReader reader(object, u"app."_s, deviations);
    const QString bundleId = reader.text("bundle_id"_L1).value_or(QString());
    reader.text("version"_L1);
    reader.text("build"_L1);
    reader.nameUnknownKeys();
    return bundleId;
}

void readContact(FieldReader &reader)
{
    const auto email = reader.text("email"_L1, Presence::Optional);
    const auto isAllowed = reader.boolean("allow_contact"_L1);
    if (!email)
        return;
    if (email->isEmpty())
        reader.complain("email"_L1, u"is empty; an absent address must be left out"_s);
    if (!isTrimmed(*email))
        reader.complain("email"_L1, u"is not trimmed"_s);
    if (isAllowed && !*isAllowed)
        reader.complain("email"_L1, u"must be left out when allow_contact is false"_s);
}

void readMoment(FieldReader &reader)
{
    static const QRegularExpression form(u"\\A[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z\\z"_s);
    const auto moment = reader.text("occurred_at"_L1);
    if (moment && (!form.match(*moment).hasMatch() || !QDateTime::fromString(*moment, Qt::ISODate).isValid()))
        reader.complain("occurred_at"_L1, u"must be a moment of the form 2026-11-14T23:35:30Z"_s);
}

void readUploadIds(FieldReader &reader, ReportRequest &report)
{
    const auto ids = reader.texts("attachment_upload_ids"_L1, Presence::Optional);
    report.attachmentIds = ids.value_or(QStringList());
    report.screenshotId = reader.text("screenshot_upload_id"_L1, Presence::Optional).value_or(QString());
    if (ids && ids->isEmpty())
        reader.complain("attachment_upload_ids"_L1, u"is empty; it must be left out when there are none"_s);
    if (report.attachmentIds.size() > attachmentLimit)
        reader.complain("attachment_upload_ids"_L1, u"holds more than %1 ids"_s.arg(attachmentLimit));
    if (report.attachmentIds.removeDuplicates() > 0)
        reader.complain("attachment_upload_ids"_L1, u"names an upload twice"_s);
    if (!report.screenshotId.isEmpty() && !report.attachmentIds.contains(report.screenshotId))
        reader.complain("screenshot_upload_id"_L1, u"is not among attachment_upload_ids"_s);
}

} // namespace

Reading<ValidateRequest> readValidateRequest(const QByteArray &body)
{
    Reading<ValidateRequest> reading;
    if (const auto object = parse(body, reading)) {
        FieldReader reader(*object, {}, reading.deviations);
        readCaller(reader, reading.record);
        reader.nameUnknownKeys();
    }
    return reading;
}

Reading<PingRequest> readPingRequest(const QByteArray &body)
{
    Reading<PingRequest> reading;
    if (const auto object = parse(body, reading)) {
        FieldReader reader(*object, {}, reading.deviations);
        reading.record.token = reader.text("token"_L1).value_or(QString());
        reading.record.bundleId = trimmedText(reader, "bundle_id"_L1);
        reader.word("platform"_L1, {u"ios"_s});
        trimmedText(reader, "device_id"_L1);
        reader.nameUnknownKeys();
    }
    return reading;
}

Reading<InitRequest> readInitRequest(const QByteArray &body)
{
    Reading<InitRequest> reading;
    const auto object = parse(body, reading);
    if (!object)
        return reading;
    FieldReader reader(*object, {}, reading.deviations);
    InitRequest &record = reading.record;
    readCaller(reader, record);
    record.kind = reader.word("kind"_L1, {u"screenshot"_s, u"video"_s}).value_or(QString());
    record.mimeType = reader.word("mime_type"_L1, screenshotTypes + videoTypes).value_or(QString());
    const bool areBothKnown = !record.kind.isEmpty() && !record.mimeType.isEmpty();
    if (areBothKnown && videoTypes.contains(record.mimeType) != (record.kind == "video"_L1))
        reader.complain("mime_type"_L1, u"does not go with the kind "_s + record.kind);
    const auto bytes = reader.integer("bytes"_L1);
    record.bytes = bytes.value_or(0);
    if (bytes && record.bytes <= 0)
        reader.complain("bytes"_L1, u"must be more than 0"_s);
    if (record.bytes > uploadLimit)
        reader.complain("bytes"_L1, u"must be no more than %1"_s.arg(uploadLimit));
    reader.nameUnknownKeys();
    return reading;
}

Reading<CompleteRequest> readCompleteRequest(const QByteArray &body)
{
    Reading<CompleteRequest> reading;
    if (const auto object = parse(body, reading)) {
        FieldReader reader(*object, {}, reading.deviations);
        readCaller(reader, reading.record);
        reading.record.uploadId = reader.text("upload_id"_L1).value_or(QString());
        reading.record.etag = reader.text("etag"_L1, Presence::Optional);
        reader.nameUnknownKeys();
    }
    return reading;
}

Reading<ReportRequest> readReportRequest(const QByteArray &body)
{
    Reading<ReportRequest> reading;
    const auto object = parse(body, reading);
    if (!object)
        return reading;
    FieldReader reader(*object, {}, reading.deviations);
    ReportRequest &record = reading.record;
    record.object = *object;
    record.token = reader.text("token"_L1).value_or(QString());
    const auto category = reader.word("category"_L1, {u"bug"_s, u"feedback"_s});
    trimmedText(reader, "message"_L1);
    const auto frequency = reader.word("occurrence_frequency"_L1, frequencies, Presence::Optional);
    if (frequency && category == u"feedback"_s)
        reader.complain("occurrence_frequency"_L1, u"goes only with the category bug"_s);
    reader.text("steps"_L1, Presence::Optional);
    readContact(reader);
    readUploadIds(reader, record);
    readMoment(reader);
    if (const auto device = reader.object("device"_L1))
        readDevice(*device, reading.deviations);
    if (const auto app = reader.object("app"_L1))
        record.bundleId = readApp(*app, reading.deviations);
    reader.nameUnknownKeys();
    return reading;
}

QStringList contentTypeDeviations(const Headers &headers)
{
    const auto types = headerValues(headers, "Content-Type"_ba);
    if (types.size() != 1)
        return {u"Content-Type must be given once, as application/json"_s};
    const QList<QByteArray> parts = types.first().split(';');
    const bool isJson = parts.first().trimmed().compare("application/json"_ba, Qt::CaseInsensitive) == 0;
    const bool isPlain =
        parts.size() == 1 || (parts.size() == 2 && parts.at(1).trimmed().toLower().startsWith("charset="_ba));
    return isJson && isPlain ? QStringList() : QStringList{u"Content-Type must be application/json"_s};
}

QStringList attachmentDeviations(const ReportRequest &report, const QString &owner,
                                 const std::function<const Upload *(const QString &)> &find)
{
    QStringList deviations;
    for (const QString &id : report.attachmentIds) {
        const Upload *upload = find(id);
        const QString what = u"attachment_upload_ids: "_s + id;
        if (upload == nullptr)
            deviations << what + u" was never issued, or is part of another report"_s;
        else if (upload->owner != owner)
            deviations << what + u" was issued to another token"_s;
        else if (!upload->isCompleted)
            deviations << what + u" was not completed"_s;
        else if (id == report.screenshotId && upload->kind != "screenshot"_L1)
            deviations << u"screenshot_upload_id is not of the kind screenshot"_s;
    }
    return deviations;
}

StorageVerdict judgeStorageHead(const Upload &upload, const QByteArray &target, const Headers &headers,
                                qint64 contentLength)
{
    StorageVerdict verdict;
    const auto complain = [&](int status, const QString &text) {
        if (verdict.status == 0)
            verdict.status = status;
        verdict.deviations << text;
    };
    const auto require = [&](const QByteArray &name, const QByteArray &value) {
        if (headerValues(headers, name) != QList<QByteArray>{value})
            complain(403,
                     u"the header %1 must be there exactly once, as required_headers gave it"_s.arg(
                         QString::fromLatin1(name)));
    };
    if (target != upload.target())
        complain(403, u"the URL is not the upload_url that was given out (path or signature)"_s);
    require("Content-Type"_ba, upload.mimeType.toLatin1());
    require("x-zenvor-upload"_ba, upload.nonce);
    if (!headerValues(headers, "Authorization"_ba).isEmpty())
        complain(400, u"the header Authorization must not be sent to the storage"_s);
    if (contentLength < 0)
        complain(411, u"Content-Length is missing"_s);
    else if (contentLength > uploadLimit)
        complain(413, u"Content-Length is more than %1 bytes"_s.arg(uploadLimit));
    else if (contentLength != upload.bytes)
        complain(400,
                 u"Content-Length is not the number of bytes that was declared (%1)"_s.arg(upload.bytes));
    return verdict;
}

} // namespace zenvor::sandbox
