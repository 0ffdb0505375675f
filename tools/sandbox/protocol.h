#pragma once

#include "sandbox/http_headers.h"
#include "sandbox/upload.h"

#include <QJsonObject>
#include <QStringList>

#include <functional>
#include <optional>

namespace zenvor::sandbox {

// What the five requests must look like. Pure: bytes in, a record and everything wrong with it out.

/// Who sent a request and for which app; part of each of them.
struct Caller
{
    QString token;
    QString bundleId;
};

struct ValidateRequest : Caller
{
};

struct PingRequest : Caller
{
};

struct InitRequest : Caller
{
    QString kind;
    QString mimeType;
    qint64 bytes = 0;
};

struct CompleteRequest : Caller
{
    QString uploadId;
    std::optional<QString> etag;
};

struct ReportRequest : Caller
{
    QString screenshotId; ///< empty: none
    QStringList attachmentIds;
    QJsonObject object; ///< the whole body
};

/// A record whose fields hold only as far as no deviation speaks of them.
template<typename Record>
struct Reading
{
    Record record;
    QStringList deviations;
    bool isJson = true;
};

Reading<ValidateRequest> readValidateRequest(const QByteArray &body);
Reading<PingRequest> readPingRequest(const QByteArray &body);
Reading<InitRequest> readInitRequest(const QByteArray &body);
Reading<CompleteRequest> readCompleteRequest(const QByteArray &body);
Reading<ReportRequest> readReportRequest(const QByteArray &body);

/// What is wrong with the Content-Type of a JSON request, or nothing.
QStringList contentTypeDeviations(const Headers &headers);

/// What is wrong with the uploads that a report names. \a owner is the digest of its token.
QStringList attachmentDeviations(const ReportRequest &report, const QString &owner,
                                 const std::function<const Upload *(const QString &)> &find);

/// What is wrong with the head of a PUT to an upload's URL, and the status for it (0: nothing).
struct StorageVerdict
{
    int status = 0;
    QStringList deviations;
};
StorageVerdict judgeStorageHead(const Upload &upload, const QByteArray &target, const Headers &headers,
                                qint64 contentLength);

/// The largest upload, in bytes.
constexpr qint64 uploadLimit = 512LL * 1024 * 1024;

} // namespace zenvor::sandbox
