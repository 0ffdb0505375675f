#include "client/wire_records.h"

#include "client/feedback_report.h"
#include "platform/json.h"

namespace zenvor {
namespace {

using namespace Qt::StringLiterals;

JsonWriter deviceObject(const DeviceInfo &device)
{
    JsonWriter json;
    json.string("model"_L1, device.model);
    json.string("machine"_L1, device.machine);
    json.string("os_name"_L1, device.osName);
    json.string("os_version"_L1, device.osVersion);
    json.string("locale"_L1, device.locale);
    json.string("time_zone"_L1, device.timeZone);
    json.number("screen_width"_L1, device.screenWidth);
    json.number("screen_height"_L1, device.screenHeight);
    json.string("interface_style"_L1, device.interfaceStyle);
    json.string("identifier_for_vendor"_L1, device.identifierForVendor);
    return json;
}

JsonWriter appObject(const AppInfo &app)
{
    JsonWriter json;
    json.string("bundle_id"_L1, app.bundleId);
    json.string("version"_L1, app.version);
    json.string("build"_L1, app.build);
    return json;
}

JsonWriter identified(const QString &token, const QString &bundleId)
{
    JsonWriter json;
    json.string("token"_L1, token);
    json.string("bundle_id"_L1, bundleId);
    return json;
}

} // namespace

QByteArray toJson(const FeedbackReportPayload &payload)
{
    JsonWriter json;
    json.string("token"_L1, payload.token);
    json.string("category"_L1, payload.category);
    json.string("message"_L1, payload.message);
    json.string("occurrence_frequency"_L1, payload.occurrenceFrequency);
    json.string("steps"_L1, payload.steps);
    json.string("email"_L1, payload.email);
    json.boolean("allow_contact"_L1, payload.allowContact);
    json.string("screenshot_upload_id"_L1, payload.screenshotUploadId);
    json.strings("attachment_upload_ids"_L1, payload.attachmentUploadIds);
    json.object("device"_L1, deviceObject(payload.device));
    json.object("app"_L1, appObject(payload.app));
    json.string("occurred_at"_L1, payload.occurredAt);
    return json.toJson();
}

QByteArray ValidateTokenRequest::toJson() const
{
    return identified(token, bundleId).toJson();
}

ValidateTokenResponse ValidateTokenResponse::fromJson(const QByteArray &json)
{
    const JsonReader reader(json);
    return {.ok = reader.boolean("ok"_L1), .match = reader.boolean("match"_L1)};
}

QByteArray InitUploadRequest::toJson() const
{
    auto json = identified(token, bundleId);
    json.string("kind"_L1, kind);
    json.string("mime_type"_L1, mimeType);
    json.integer("bytes"_L1, bytes);
    return json.toJson();
}

InitUploadResponse InitUploadResponse::fromJson(const QByteArray &json)
{
    const JsonReader reader(json);
    return {.ok = reader.boolean("ok"_L1),
            .uploadId = reader.string("upload_id"_L1),
            .uploadURL = reader.string("upload_url"_L1),
            .requiredHeaders = reader.optionalStrings("required_headers"_L1)};
}

QByteArray CompleteUploadRequest::toJson() const
{
    auto json = identified(token, bundleId);
    json.string("upload_id"_L1, uploadId);
    json.string("etag"_L1, etag);
    return json.toJson();
}

CompleteUploadResponse CompleteUploadResponse::fromJson(const QByteArray &json)
{
    const JsonReader reader(json);
    return {.ok = reader.boolean("ok"_L1)};
}

QByteArray DevicePingRequest::toJson() const
{
    auto json = identified(token, bundleId);
    // The protocol's name for this kind of client, whatever system it runs on.
    json.string("platform"_L1, u"ios"_s);
    json.string("device_id"_L1, deviceId);
    return json.toJson();
}

} // namespace zenvor
