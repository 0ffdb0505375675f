#include "faults/policy.h"

namespace zenvor::test {
namespace {

using namespace Qt::StringLiterals;
using Extent = FaultPair::Extent;

constexpr int maxTries = 3;
constexpr double timeOut = 60;
/// A call may end that much later than it has to: work takes sixty times as long on the injected clock.
constexpr double margin = 60;
constexpr qint64 memoryBound = 48 * 1024 * 1024;

QString operationOf(RequestKind kind)
{
    return kind == RequestKind::Validate ? u"Token validate"_s : u"Report submit"_s;
}

// The texts are a contract: the form looks for phrases in them.
const QMap<int, QString> failureTexts{
    {-1000, u"The URL is malformed."_s},
    {-1001, u"The request timed out."_s},
    {-1002, u"The URL is not supported."_s},
    {-1003, u"Unable to resolve host."_s},
    {-1004, u"Could not connect to the server."_s},
    {-1005, u"Could not connect: the network connection was lost."_s},
    {-1007, u"The server redirected too many times."_s},
    {-1015, u"The content of the answer cannot be decoded."_s},
    {-1200, u"An SSL error has occurred and a secure connection to the server cannot be made."_s},
    {-1202, u"The certificate for this server is invalid."_s},
};

// To whoever waits for the answer itself: validation and the report.
QString resultFor(RequestKind kind, const Ending &ending)
{
    const auto good = kind == RequestKind::Validate ? u"matched"_s : u"delivered"_s;
    const auto operation = operationOf(kind);
    switch (ending.kind) {
    case Ending::Kind::Answer:
        return good;
    case Ending::Kind::UnreadableAnswer:
        return readsBody(kind) ? u"ReportClientError: Could not parse token validation response."_s : good;
    case Ending::Kind::Status: {
        if (kind == RequestKind::Validate && ending.code == 401)
            return u"ReportClientError: SDK token is invalid or revoked."_s;
        const auto text = u"ServiceError %1: %2 failed with status %1 (host=%3)"_s.arg(ending.code)
                              .arg(operation, QLatin1StringView(serviceHost));
        return ending.detail.isEmpty() ? text : text + ": "_L1 + ending.detail;
    }
    case Ending::Kind::Failure:
        return u"ServiceError %1: %2 network error (host=%3): %4"_s.arg(ending.code)
            .arg(operation, QLatin1StringView(serviceHost), failureTexts.value(ending.code));
    }
    Q_UNREACHABLE();
}

// A ping is given up if the token is revoked or the error quotes one of four statuses as the client's own
// status error does; every other failure is kept.
QString queueAfter(const FaultPair &pair)
{
    const auto ending = pair.ending();
    const bool isRevoked = ending.kind == Ending::Kind::Status && ending.code == 401;
    const bool isQuoted = ending.detail.contains("status code: 404"_L1, Qt::CaseInsensitive);
    const bool isHealed = pair.isRepeated() && pair.extent == Extent::Once;
    if (pair.isHarmless() || isHealed || isRevoked || isQuoted)
        return u"other"_s;
    return u"device after %1 failures, in %2 s; other"_s.arg(pingFailuresBefore + 1).arg(backOffAfterThree);
}

// On which of the struck tries the request goes out on a pooled connection. A reservation follows a loss,
// which leaves no connection behind; what follows a reservation uses its connection.
int pooledTries(const FaultPair &pair)
{
    const bool isFirstOnly = pair.kind == RequestKind::Init;
    return isFirstOnly ? 1 : struckTries(pair);
}

bool isHealedBySession(const FaultPair &pair)
{
    return pair.isRepeated() && pair.extent == Extent::Once;
}

// Requests on the wire for all struck tries.
int struckRequests(const FaultPair &pair)
{
    const auto detour = pair.fault.detour;
    if (detour != Detour::None && detour != Detour::SecureService)
        return 0;
    const int repeats = pair.isRepeated() ? pooledTries(pair) : 0;
    return struckTries(pair) * pair.fault.requests + repeats;
}

// The requests of one attachment that nothing happens to.
RequestCounts smoothUpload()
{
    RequestCounts counts;
    for (const auto step : {RequestKind::Init, RequestKind::Put, RequestKind::Complete})
        counts[step] = 1;
    return counts;
}

// The first attachment is tried until it succeeds or is given up.
RequestCounts firstUpload(const FaultPair &pair, int struck)
{
    const bool succeeds = pair.isHarmless() || isHealedBySession(pair);
    const bool isGivenUp = !succeeds && pair.extent == Extent::Always;
    auto counts = succeeds || isGivenUp ? RequestCounts() : smoothUpload(); // the try after the fault
    for (const auto step : {RequestKind::Init, RequestKind::Put, RequestKind::Complete}) {
        const bool isReached = step <= pair.kind || succeeds;
        if (isReached)
            counts[step] += step == pair.kind ? struck : struckTries(pair);
    }
    return counts;
}

RequestCounts countsBeforeSecond(const FaultPair &pair, int struck)
{
    if (isUpload(pair.kind)) {
        auto counts = firstUpload(pair, struck);
        counts[RequestKind::Report] = 1;
        return counts;
    }
    auto counts = pair.kind == RequestKind::Report ? smoothUpload() : RequestCounts();
    counts[pair.kind] = struck;
    return counts;
}

RequestCounts countsForSecond(const FaultPair &pair)
{
    const bool isSubmission = isUpload(pair.kind) || pair.kind == RequestKind::Report;
    return isSubmission ? smoothUpload() : RequestCounts();
}

RequestCounts sum(RequestCounts a, const RequestCounts &b)
{
    for (const auto kind : allRequestKinds)
        a[kind] += b[kind];
    return a;
}

QString keptIn(const FaultPair &pair)
{
    if (pair.kind == RequestKind::Validate)
        return {};
    if (pair.kind == RequestKind::Ping)
        return queueAfter(pair);
    if (pair.kind == RequestKind::Report && struckRequests(pair) == 0)
        return u"no report"_s;
    if (pair.kind == RequestKind::Report && pair.fault.leavesBodyUnread)
        return u"a report that the service did not read"_s;
    const bool isLeftOut = isUpload(pair.kind) && pair.extent == Extent::Always && !pair.isHarmless();
    return isLeftOut ? u"1 attachment, no screenshot"_s : u"2 attachments, a screenshot"_s;
}

QStringList refusalsFor(const FaultPair &pair)
{
    // A redirect that turned the request into a GET, which the service does not take.
    const auto ending = pair.ending();
    if (ending.kind != Ending::Kind::Status || ending.code != 405)
        return {};
    return {u"GET 405"_s};
}

} // namespace

int struckTries(const FaultPair &pair)
{
    const bool isTriedAgain = isUpload(pair.kind) && !pair.isHarmless() && pair.extent == Extent::Always;
    return isTriedAgain ? maxTries : 1;
}

int strikes(const FaultPair &pair)
{
    if (isHealedBySession(pair) || pair.fault.isPlayedOnce)
        return 1;
    return isUpload(pair.kind) ? struckRequests(pair) : 0;
}

Outcome expectedOutcome(const FaultPair &pair)
{
    Outcome outcome;
    const auto ending = isHealedBySession(pair) ? Ending() : pair.ending();
    if (pair.kind == RequestKind::Validate || pair.kind == RequestKind::Report)
        outcome.result = resultFor(pair.kind, ending);
    else
        outcome.result = pair.kind == RequestKind::Ping ? u"flushed"_s : u"delivered"_s;
    outcome.made = countsBeforeSecond(pair, struckTries(pair));
    outcome.madeForSecond = countsForSecond(pair);
    outcome.arrived = sum(countsBeforeSecond(pair, struckRequests(pair)), outcome.madeForSecond);
    outcome.kept = keptIn(pair);
    outcome.refusals = refusalsFor(pair);
    outcome.next = u"matched"_s;
    return outcome;
}

Limits limitsOf(const FaultPair &pair)
{
    const auto ending = pair.ending();
    auto one = readsBody(pair.kind) ? pair.fault.reading : pair.fault.discarding;
    if (ending.kind == Ending::Kind::Failure && ending.code == -1001)
        one = {.least = timeOut, .most = timeOut};
    const int tries = struckTries(pair);
    return {.leastSeconds = one.least * tries,
            .mostSeconds = one.most * tries + margin,
            .mostMemory = memoryBound};
}

} // namespace zenvor::test
