#include "sandbox/service.h"

#include "sandbox/control.h"

#include <QCryptographicHash>
#include <QJsonObject>
#include <QRegularExpression>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 jsonLimit = 4 * 1024 * 1024;
const QByteArray storagePrefix = "/storage/"_ba;

QString ownerOf(const QString &token)
{
    return QString::fromLatin1(QCryptographicHash::hash(token.toUtf8(), QCryptographicHash::Sha256).toHex());
}

QString uploadIdOf(const RequestHead &head)
{
    return QString::fromLatin1(head.path().mid(storagePrefix.size()));
}

bool isEndpoint(const QByteArray &path)
{
    static const QList<QByteArray> paths = {"/v1/sdk/validate"_ba, "/v1/sdk/devices/ping"_ba,
                                            "/v1/sdk/uploads/init"_ba, "/v1/sdk/uploads/complete"_ba,
                                            "/v1/sdk/reports"_ba};
    return paths.contains(path);
}

Answer ok()
{
    return jsonAnswer(200, {{u"ok"_s, true}});
}

Answer diskRefusal(const QString &text)
{
    return refusal(500, {text});
}

} // namespace

Service::Service(QHash<QString, QString> bundleIdsByToken, QObject *parent)
    : QObject(parent)
    , m_bundleIdsByToken(std::move(bundleIdsByToken))
{
}

bool Service::open(const QString &folder, QString *error, QStringList *notes)
{
    return m_uploads.open(folder + u"/uploads"_s, error, notes)
        && m_reports.open(folder + u"/reports"_s, error, notes);
}

std::optional<Answer> Service::judgeHost(const RequestHead &head)
{
    const auto hosts = headerValues(head.headers, "Host"_ba);
    if (hosts.isEmpty() && head.minorVersion == 0)
        return {};
    if (hosts.size() != 1)
        return refusal(400, {u"the header Host must be there exactly once"_s});
    static const QRegularExpression local(
        u"\\A(localhost|127(\\.[0-9]{1,3}){3}|\\[::1\\])(:[0-9]{1,5})?\\z"_s,
        QRegularExpression::CaseInsensitiveOption);
    if (local.match(QString::fromLatin1(hosts.first())).hasMatch())
        return {};
    return refusal(403, {u"the header Host must name this machine: 127.0.0.1, [::1] or localhost"_s});
}

bool Service::isForDeveloper(const QByteArray &path)
{
    return path == "/"_ba || path == "/favicon.ico"_ba || path == "/sandbox"_ba
        || path.startsWith("/sandbox/"_ba);
}

Service::Intake Service::begin(const RequestHead &head)
{
    const QByteArray path = head.path();
    Intake intake;
    intake.bodyLimit = jsonLimit;
    if (path.startsWith(storagePrefix)) {
        intake.bodyLimit = uploadLimit;
        intake.refusal = judgeStorage(head);
        if (!intake.refusal)
            intake.upload = m_uploads.receive(uploadIdOf(head));
    } else if (isEndpoint(path)) {
        if (head.method != "POST"_ba)
            intake.refusal = methodRefusal("POST"_ba);
    } else if (!isForDeveloper(path)) {
        intake.refusal = jsonAnswer(404, {{u"error"_s, u"there is nothing at this path"_s}});
        intake.refusal->deviations << u"unknown path"_s;
    }
    return intake;
}

Answer Service::finish(const RequestHead &head, const QByteArray &body, Intake &intake)
{
    if (intake.refusal)
        return *intake.refusal;
    if (intake.upload)
        return storeUpload(head, *intake.upload);
    const QByteArray path = head.path();
    if (path == "/v1/sdk/validate"_ba)
        return validate(head, body);
    if (path == "/v1/sdk/devices/ping"_ba)
        return ping(head, body);
    if (path == "/v1/sdk/uploads/init"_ba)
        return initUpload(head, body);
    if (path == "/v1/sdk/uploads/complete"_ba)
        return completeUpload(head, body);
    if (path == "/v1/sdk/reports"_ba)
        return submitReport(head, body);
    return answerDeveloper(head, body, {m_faults, m_events, m_requests, m_reports, firstSteps()});
}

FirstSteps Service::firstSteps() const
{
    // The token of a sandbox that was started without one stands in its manual; others are nobody's to show.
    const QString known = u"demo-token"_s;
    const bool isDemo = m_bundleIdsByToken.contains(known);
    const QString bundleId = isDemo ? m_bundleIdsByToken.value(known) : m_bundleIdsByToken.values().value(0);
    return {m_origin.toString(), isDemo ? known : u"TOKEN"_s, bundleId};
}

template<typename Record>
std::optional<Answer> Service::judge(const RequestHead &head, Reading<Record> &reading,
                                     bool isBundleBinding) const
{
    const Caller &caller = reading.record;
    reading.deviations = contentTypeDeviations(head.headers) + reading.deviations;
    if (!reading.isJson)
        return refusal(400, reading.deviations);
    const bool hasToken = !caller.token.isNull();
    if (hasToken && !m_bundleIdsByToken.contains(caller.token)) {
        Answer answer = refusal(401, {u"token is unknown or revoked"_s});
        answer.deviations << reading.deviations;
        return answer;
    }
    if (!reading.deviations.isEmpty())
        return refusal(422, reading.deviations);
    if (isBundleBinding && m_bundleIdsByToken.value(caller.token) != caller.bundleId)
        return refusal(403, {u"bundle_id is not the app that the token was issued for"_s});
    return {};
}

Answer Service::validate(const RequestHead &head, const QByteArray &body)
{
    auto reading = readValidateRequest(body);
    if (auto refused = judge(head, reading, false))
        return *refused;
    const bool isMatch = m_bundleIdsByToken.value(reading.record.token) == reading.record.bundleId;
    return jsonAnswer(200, {{u"ok"_s, true}, {u"match"_s, isMatch}});
}

Answer Service::ping(const RequestHead &head, const QByteArray &body)
{
    auto reading = readPingRequest(body);
    if (auto refused = judge(head, reading, true))
        return *refused;
    return ok();
}

Answer Service::initUpload(const RequestHead &head, const QByteArray &body)
{
    auto reading = readInitRequest(body);
    if (auto refused = judge(head, reading, true))
        return *refused;
    const InitRequest &request = reading.record;
    const Upload *upload =
        m_uploads.reserve(ownerOf(request.token), request.kind, request.mimeType, request.bytes);
    if (upload == nullptr)
        return diskRefusal(u"the upload cannot be written to the folder"_s);
    const QString url = m_origin.toString(QUrl::FullyEncoded) + QString::fromLatin1(upload->target());
    const QJsonObject headers{{u"Content-Type"_s, upload->mimeType},
                              {u"x-zenvor-upload"_s, QString::fromLatin1(upload->nonce)}};
    return jsonAnswer(200,
                      {{u"ok"_s, true},
                       {u"upload_id"_s, upload->id},
                       {u"upload_url"_s, url},
                       {u"required_headers"_s, headers}});
}

std::optional<Answer> Service::judgeStorage(const RequestHead &head) const
{
    const Upload *upload = m_uploads.find(uploadIdOf(head));
    if (upload == nullptr)
        return refusal(404, {u"the URL names no upload that was given out"_s});
    if (head.method != "PUT"_ba)
        return methodRefusal("PUT"_ba);
    const StorageVerdict verdict = judgeStorageHead(*upload, head.target, head.headers, head.contentLength);
    if (verdict.status != 0)
        return refusal(verdict.status, verdict.deviations);
    if (upload->isCompleted)
        return refusal(409, {u"the upload was completed already"_s});
    return {};
}

Answer Service::storeUpload(const RequestHead &head, IncomingUpload &incoming)
{
    const QString id = uploadIdOf(head);
    const Upload *upload = m_uploads.find(id);
    if (upload == nullptr || upload->isCompleted)
        return refusal(409, {u"the upload was completed while the bytes were on their way"_s});
    if (!m_uploads.accept(id, incoming))
        return diskRefusal(u"the bytes cannot be written to the folder"_s);
    upload = m_uploads.find(id);
    Answer answer;
    answer.headers.append({"ETag"_ba, upload->etag});
    if (!looksLike(upload->mimeType, incoming.firstBytes()))
        answer.notes << u"the bytes do not begin like "_s + upload->mimeType;
    return answer;
}

void Service::noteSent(const RequestHead &head, const Intake &intake, const Headers &sent)
{
    if (intake.upload)
        m_uploads.setEtag(uploadIdOf(head), headerValues(sent, "ETag"_ba).value(0));
}

Answer Service::completeUpload(const RequestHead &head, const QByteArray &body)
{
    auto reading = readCompleteRequest(body);
    if (auto refused = judge(head, reading, true))
        return *refused;
    const CompleteRequest &request = reading.record;
    const Upload *upload = m_uploads.find(request.uploadId);
    if (upload == nullptr)
        return refusal(422, {u"upload_id was never issued"_s});
    if (upload->owner != ownerOf(request.token))
        return refusal(422, {u"upload_id was issued to another token"_s});
    if (!upload->hasArrived)
        return refusal(409, {u"the bytes of upload_id have not arrived"_s});
    if (!request.etag && !upload->etag.isEmpty())
        return refusal(422, {u"etag is missing, though the storage gave one"_s});
    if (request.etag && request.etag->toUtf8() != upload->etag)
        return refusal(422, {u"etag is not the one that the storage gave, verbatim"_s});
    if (!m_uploads.complete(upload->id))
        return diskRefusal(u"the upload cannot be written to the folder"_s);
    return ok();
}

Answer Service::submitReport(const RequestHead &head, const QByteArray &body)
{
    auto reading = readReportRequest(body);
    const ReportRequest &report = reading.record;
    reading.deviations += attachmentDeviations(report, ownerOf(report.token),
                                               [this](const QString &id) { return m_uploads.find(id); });
    if (auto refused = judge(head, reading, true))
        return *refused;

    QList<AttachmentSource> files;
    for (const QString &id : report.attachmentIds) {
        const Upload *upload = m_uploads.find(id);
        files << AttachmentSource{m_uploads.dataPath(id), upload->kind, upload->mimeType, upload->bytes};
    }
    QString error;
    const auto stored = m_reports.add(report.object, files, &error);
    if (!stored)
        return diskRefusal(error);
    for (const QString &id : report.attachmentIds)
        m_uploads.remove(id);
    m_events.publish(stored->id);
    Q_EMIT reportReceived(stored->id);
    return ok();
}

} // namespace zenvor::sandbox
