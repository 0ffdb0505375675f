#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace zenvor {

struct FeedbackReportPayload;

/// The JSON bodies of the report service. Each request record writes its own; each response record
/// reads its own and throws JsonDecodingError where a required member is missing, null or of another
/// type.
QByteArray toJson(const FeedbackReportPayload &payload);

struct ValidateTokenRequest
{
    QString token;
    QString bundleId;

    QByteArray toJson() const;
};

struct ValidateTokenResponse
{
    bool ok = false;
    bool match = false;

    static ValidateTokenResponse fromJson(const QByteArray &json);
};

struct InitUploadRequest
{
    QString token;
    QString bundleId;
    QString kind;
    QString mimeType;
    qint64 bytes = 0;

    QByteArray toJson() const;
};

struct InitUploadResponse
{
    bool ok = false;
    QString uploadId;
    QString uploadURL;
    std::optional<QMap<QString, QString>> requiredHeaders;

    static InitUploadResponse fromJson(const QByteArray &json);
};

struct CompleteUploadRequest
{
    QString token;
    QString bundleId;
    QString uploadId;
    std::optional<QString> etag;

    QByteArray toJson() const;
};

struct CompleteUploadResponse
{
    bool ok = false;

    static CompleteUploadResponse fromJson(const QByteArray &json);
};

struct DevicePingRequest
{
    QString token;
    QString bundleId;
    QString deviceId;

    QByteArray toJson() const;
};

} // namespace zenvor
