#include "faults/fault_stage.h"

#include "client/report_client_error.h"
#include "faults/peak_memory.h"
#include "faults/policy.h"
#include "pingqueue/device_ping_queue.h"
#include "platform/qt_http_session.h"
#include "support/await.h"
#include "support/report.h"

#ifdef ZENVOR_FAULTS_CURL
#include "platform/curl_http_session.h"
#endif

#include <zenvor/report_service.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace zenvor::test {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype attachmentSize = 200'000;
constexpr qsizetype bigAttachmentSize = 12'000'000; // more than the system buffers
constexpr std::chrono::seconds callLimit{60};
constexpr double referenceDate = 978307200;

QString describe(const std::exception &error)
{
    const auto text = localizedDescription(error);
    if (const auto *service = dynamic_cast<const ServiceError *>(&error))
        return u"ServiceError %1: %2"_s.arg(service->code()).arg(text);
    if (dynamic_cast<const ReportClientError *>(&error))
        return "ReportClientError: "_L1 + text;
    return "another error: "_L1 + text;
}

QJsonObject entry(const QString &device, int failures, double dueAt)
{
    return {{u"bundleId"_s, TestService::bundleId()},
            {u"deviceId"_s, device},
            {u"attemptCount"_s, failures},
            {u"nextAttemptAt"_s, dueAt}};
}

double referenceSecondsOf(qint64 milliseconds)
{
    return double(milliseconds) / 1000 - referenceDate;
}

} // namespace

FaultStage::FaultStage()
{
    setReportServiceUrl(m_service.url());
}

std::unique_ptr<HttpSession> FaultStage::makeSession(SessionKind kind) const
{
#ifdef ZENVOR_FAULTS_CURL
    if (kind == SessionKind::Curl)
        return std::make_unique<CurlHttpSession>(m_clock, m_trusted.certificateFile());
#else
    Q_UNUSED(kind)
#endif
    return std::make_unique<QtHttpSession>(m_clock, m_trusted.certificateFile());
}

QUrl FaultStage::originOf(Detour detour) const
{
    switch (detour) {
    case Detour::None:
        return {};
    case Detour::ClosedPort:
        return m_closed.url();
    case Detour::UnknownHost:
        // Too long for a name, so that nothing is asked of a name server.
        return QUrl("http://"_L1 + QStringList(QList<QString>(5, QString(60, u'a'))).join(u'.'));
    case Detour::UntrustedService:
        return m_untrusted.url();
    case Detour::PlainService:
        return QUrl(m_service.url().toString().replace("http:"_L1, "https:"_L1));
    case Detour::SecureService:
        return m_secure.url();
    }
    Q_UNREACHABLE();
}

void FaultStage::arrange(const FaultPair &pair, DetourSession &session)
{
    for (auto *service : {&m_service, &m_secure, &m_untrusted})
        service->reset();
    session.divert(pair.kind, originOf(pair.fault.detour), struckTries(pair));
    if (pair.fault.fault.isEmpty())
        return;
    auto json = pair.fault.fault;
    json.replace("{service}", m_service.url().toEncoded()).replace("{closed}", m_closed.url().toEncoded());
    QString error;
    auto fault = sandbox::parseFault(QJsonDocument::fromJson(json).object(), &error);
    if (!fault)
        throw std::runtime_error(error.toStdString());
    fault->path = pathOf(pair.kind);
    fault->times = strikes(pair);
    auto &service = pair.fault.detour == Detour::SecureService ? m_secure : m_service;
    service.sandbox().addFault(*fault);
}

Observation FaultStage::play(const FaultPair &pair)
{
    const auto inner = makeSession(pair.session);
    DetourSession session(*inner);
    const ReportClient client(ZenvorConfiguration(TestService::token(), false), session, m_clock);
    m_service.reset();
    validate(client); // from now on there is a pooled connection, as in an app that is at work

    arrange(pair, session);
    const PeakMemory memory;
    const auto began = m_clock.now();
    Observation observation;
    auto &outcome = observation.outcome;
    outcome.result = call(pair, client);
    observation.usage.seconds = std::chrono::duration<double>(m_clock.now() - began).count();
    observation.usage.memory = memory.growth();
    outcome.made = session.made();
    outcome.madeForSecond = session.madeForSecond();

    // Whatever happened to the connections, the next request gets its own answer.
    session.divert(pair.kind, {}, 0);
    m_service.sandbox().clearFaults();
    outcome.next = validate(client);
    countArrivals(outcome);
    outcome.kept = keptIn(pair);
    return observation;
}

void FaultStage::countArrivals(Outcome &outcome) const
{
    for (const auto &request : arrivedRequests()) {
        const auto kind = requestKindOf(QString::fromLatin1(request.path()));
        if (!kind)
            continue; // bytes that were no HTTP
        ++outcome.arrived[*kind];
        if (!request.isFault && !request.deviations.isEmpty())
            outcome.refusals.append(u"%1 %2"_s.arg(QLatin1StringView(request.method)).arg(request.status));
    }
    --outcome.arrived[RequestKind::Validate]; // the request that came afterwards
}

QString FaultStage::call(const FaultPair &pair, const ReportClient &client)
{
    switch (pair.kind) {
    case RequestKind::Validate:
        return validate(client);
    case RequestKind::Ping:
        return flush(client);
    case RequestKind::Init:
    case RequestKind::Put:
    case RequestKind::Complete:
    case RequestKind::Report:
        return submit(client, pair.fault.leavesBodyUnread ? bigAttachmentSize : attachmentSize);
    }
    Q_UNREACHABLE();
}

QString FaultStage::validate(const ReportClient &client)
{
    try {
        const auto result = await(client.validateToken(TestService::bundleId()), callLimit);
        return result == TokenBundleValidationResult::Matched ? u"matched"_s : u"mismatch"_s;
    } catch (const std::exception &error) {
        return describe(error);
    }
}

QString FaultStage::submit(const ReportClient &client, qsizetype size)
{
    const ReportUploadAttachment screenshot{.data = "\x89PNG\r\n\x1a\n"_ba + QByteArray(size, 'p'),
                                            .mimeType = u"image/png"_s,
                                            .kind = u"screenshot"_s};
    const ReportUploadAttachment video{.data = "\0\0\0\x18"
                                               "ftypisom"_ba
                                           + QByteArray(attachmentSize, 'v'),
                                       .mimeType = u"video/mp4"_s,
                                       .kind = u"video"_s};
    try {
        await(client.submit(report(), {screenshot, video}), callLimit);
        return u"delivered"_s;
    } catch (const std::exception &error) {
        return describe(error);
    }
}

QString FaultStage::flush(const ReportClient &client)
{
    m_flushBegan = m_clock.currentDateTime().toMSecsSinceEpoch();
    const double now = referenceSecondsOf(m_flushBegan);
    const UserDefaults storage(m_folder.filePath(u"store"_s));
    const QJsonArray entries{entry(u"device"_s, pingFailuresBefore, now),
                             entry(u"other"_s, 7, now + 100'000)};
    storage.setData(DevicePingQueue::storageKey(), QJsonDocument(entries).toJson());
    DevicePingQueue queue(storage, m_clock);
    try {
        await(queue.flush(client, 3), callLimit);
        m_flushEnded = m_clock.currentDateTime().toMSecsSinceEpoch();
        return u"flushed"_s;
    } catch (const std::exception &error) {
        return describe(error);
    }
}

QList<sandbox::RecordedRequest> FaultStage::arrivedRequests() const
{
    return m_service.requests() + m_secure.requests() + m_untrusted.requests();
}

QString FaultStage::keptIn(const FaultPair &pair) const
{
    if (pair.kind == RequestKind::Validate)
        return {};
    if (pair.kind == RequestKind::Ping)
        return queueAfterwards();
    for (const auto &request : arrivedRequests()) {
        if (request.path() != "/v1/sdk/reports" || request.method != "POST")
            continue;
        if (request.bodySize == 0)
            return u"a report that the service did not read"_s;
        const auto report = QJsonDocument::fromJson(request.body).object();
        const auto count = report.value("attachment_upload_ids"_L1).toArray().size();
        const auto screenshot = report.contains("screenshot_upload_id"_L1) ? u"a"_s : u"no"_s;
        return u"%1 attachment%2, %3 screenshot"_s.arg(count).arg(count == 1 ? u""_s : u"s"_s, screenshot);
    }
    return u"no report"_s;
}

QString FaultStage::queueAfterwards() const
{
    const UserDefaults storage(m_folder.filePath(u"store"_s));
    const auto json = storage.data(DevicePingQueue::storageKey()).value_or(QByteArray());
    QStringList entries;
    for (const auto &value : QJsonDocument::fromJson(json).array()) {
        const auto object = value.toObject();
        const auto device = object.value("deviceId"_L1).toString();
        const auto failures = object.value("attemptCount"_L1).toInt();
        const auto due = object.value("nextAttemptAt"_L1).toDouble();
        const bool isUntouched = device == "other"_L1 && failures == 7
            && qFuzzyCompare(due, referenceSecondsOf(m_flushBegan) + 100'000);
        // The delay runs from the failure, which lies somewhere in the call.
        const bool isBackedOff = due >= referenceSecondsOf(m_flushBegan) + backOffAfterThree
            && due <= referenceSecondsOf(m_flushEnded) + backOffAfterThree;
        if (isUntouched)
            entries.append(device);
        else
            entries.append(u"%1 after %2 failures, in %3 s"_s.arg(device).arg(failures).arg(
                isBackedOff ? QString::number(backOffAfterThree) : u"(wrong time)"_s));
    }
    return entries.join("; "_L1);
}

} // namespace zenvor::test
