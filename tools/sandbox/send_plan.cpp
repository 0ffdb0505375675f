#include "sandbox/send_plan.h"

#include <algorithm>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

using Place = Fault::Place;
using Ending = SendPlan::Ending;

constexpr qint64 bodyBeforeStop = 64 * 1024;

bool hasNoBody(int status)
{
    return status < 200 || status == 204 || status == 304;
}

/// The place where the answer breaks off, and how.
std::pair<Place, Ending> breakOff(const Fault &fault)
{
    if (fault.stall != Place::Nowhere)
        return {fault.stall, Ending::Stall};
    if (fault.cut != Place::Nowhere)
        return {fault.cut, Ending::Cut};
    if (fault.reset != Place::Nowhere)
        return {fault.reset, Ending::Reset};
    if (fault.stopReading && !fault.status && !fault.body && !fault.bodySize && !fault.endless
        && !fault.garbage && fault.redirect.isEmpty())
        return {Place::BeforeHeaders, Ending::Stall};
    return {Place::Nowhere, Ending::KeepAlive};
}

std::shared_ptr<BodySource> plainBody(const Fault &fault, const Answer &answer, Place place)
{
    if (fault.body)
        return bytesSource(*fault.body);
    if (fault.bodySize || fault.endless)
        return fillerSource(fault.bodySize.value_or(-1));
    if (answer.body && answer.body->size() != 0)
        return answer.body;
    // A body must be there to be broken.
    const bool needsBody = place == Place::InBody || fault.badChunk || fault.gzip;
    return needsBody ? bytesSource("{\"ok\":true}"_ba) : std::shared_ptr<BodySource>();
}

/// A JSON object with one member more; nothing else can take one.
std::shared_ptr<BodySource> padded(const std::shared_ptr<BodySource> &plain, qint64 letters)
{
    const QByteArray object = plain ? plain->read(plain->size()) : "{}"_ba;
    if (!object.startsWith('{'))
        return bytesSource(object);
    const QByteArray rest = object.mid(1);
    return bytesSource("{\"padding\":\""_ba + QByteArray(letters, 'x') + (rest.startsWith('}') ? "\"" : "\",")
                       + rest);
}

std::shared_ptr<BodySource> gzipped(const std::shared_ptr<BodySource> &plain)
{
    struct Shared final : BodySource
    {
        std::shared_ptr<BodySource> inner;
        QByteArray read(qsizetype limit) override { return inner->read(limit); }
        qint64 size() const override { return inner->size(); }
    };
    auto shared = std::make_unique<Shared>();
    shared->inner = plain;
    const bool isSmall = plain->size() >= 0 && plain->size() <= 1024 * 1024;
    std::shared_ptr<BodySource> packed = gzipSource(std::move(shared));
    if (!isSmall)
        return packed;
    QByteArray bytes;
    for (QByteArray piece = packed->read(bodyBeforeStop); !piece.isEmpty();
         piece = packed->read(bodyBeforeStop))
        bytes += piece;
    return bytesSource(bytes);
}

/// Adds what the wire needs to the headers and fills the rest of the plan from them.
void frame(SendPlan &plan, const RequestHead &request, std::optional<qint64> claimedLength)
{
    Headers headers = plan.headers;
    const qint64 size = plan.body ? plan.body->size() : 0;
    const bool breaksOff = plan.ending != Ending::KeepAlive && plan.ending != Ending::Close;
    // Only a body with a stated end can be seen to break off before it.
    if (breaksOff && size < 0 && !claimedLength)
        plan.isChunked = true;
    if (request.minorVersion == 0)
        plan.isChunked = false;
    if (hasNoBody(plan.status)) {
        plan.body.reset();
    } else if (plan.isChunked) {
        setHeader(headers, "Transfer-Encoding"_ba, "chunked"_ba);
        if (!plan.body)
            plan.body = bytesSource({}); // its end is a chunk as well
    } else if (claimedLength || size >= 0) {
        setHeader(headers, "Content-Length"_ba, QByteArray::number(claimedLength.value_or(size)));
    } else if (!breaksOff) {
        plan.ending = Ending::Close; // the end of the connection is the end of the body
    }
    if (plan.ending == Ending::Close)
        setHeader(headers, "Connection"_ba, "close"_ba);
    if (request.method == "HEAD"_ba)
        plan.body.reset();
    plan.head = headBytes(plan.status, headers);
}

void applyBreak(SendPlan &plan, Place place)
{
    if (place == Place::InHeaders)
        plan.head.truncate(plan.head.size() / 2);
    if (place == Place::BeforeHeaders) {
        plan.status = 0;
        plan.head.clear();
    }
    if (place == Place::BeforeHeaders || place == Place::InHeaders)
        plan.body.reset();
    if (place == Place::InBody && plan.body) {
        const qint64 size = plan.body->size();
        plan.bodyLimit = size < 0 ? bodyBeforeStop : std::clamp<qint64>(size / 2, 1, bodyBeforeStop);
    }
}

} // namespace

SendPlan planAnswer(const RequestHead &request, const Answer &base, bool mustClose)
{
    SendPlan plan;
    plan.status = base.status;
    plan.body = base.body;
    plan.ending = mustClose || !request.wantsKeepAlive() ? Ending::Close : Ending::KeepAlive;
    plan.headers = base.headers;
    frame(plan, request, {});
    return plan;
}

SendPlan planFault(const RequestHead &request, const Fault &fault, const std::optional<Answer> &base,
                   bool mustClose)
{
    const auto [place, broken] = breakOff(fault);
    Answer answer = base.value_or(Answer());
    SendPlan plan;
    plan.delayMs = fault.delayMs;
    plan.dripMs = fault.dripMs;
    plan.dripsHead = fault.dripHeaders;
    for (const int status : fault.informational)
        plan.informational +=
            headBytes(status, status == 103 ? Headers{{"Link"_ba, "</>; rel=preload"_ba}} : Headers());
    if (fault.garbage && place == Place::Nowhere) {
        plan.head = *fault.garbage;
        plan.ending = Ending::Cut;
        return plan;
    }

    plan.status = fault.status.value_or(fault.redirect.isEmpty() ? answer.status : 307);
    if (!fault.redirect.isEmpty())
        setHeader(answer.headers, "Location"_ba,
                  fault.redirect.toLatin1().replace("{target}"_ba, request.target));
    if (fault.body || fault.bodySize || fault.endless)
        setHeader(answer.headers, "Content-Type"_ba,
                  fault.body && fault.body->startsWith('{') ? "application/json"_ba : "text/plain"_ba);
    plan.body = plainBody(fault, answer, place);
    if (fault.padding > 0)
        plan.body = padded(plan.body, fault.padding);
    if (fault.gzip && plan.body) {
        plan.body = gzipped(plan.body);
        setHeader(answer.headers, "Content-Encoding"_ba, "gzip"_ba);
    }
    for (const auto &[name, value] : fault.headers)
        setHeader(answer.headers, name, value);
    for (const QByteArray &name : fault.withoutHeaders)
        answer.headers.removeIf(
            [&](const auto &header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });

    plan.hasBadChunk = fault.badChunk;
    const bool isUnsizedGzip = fault.gzip && plan.body && plan.body->size() < 0 && !fault.endless;
    plan.isChunked = fault.chunked || fault.badChunk || (isUnsizedGzip && !fault.contentLength);
    const bool closes = mustClose || !request.wantsKeepAlive() || fault.contentLength || fault.badChunk;
    plan.ending = place != Place::Nowhere ? broken : closes ? Ending::Close : Ending::KeepAlive;
    if (fault.stopReading && plan.ending == Ending::KeepAlive)
        plan.ending = Ending::Stall; // the unread body stays in the way of any next request
    plan.headers = answer.headers;
    frame(plan, request, fault.contentLength);
    applyBreak(plan, place);
    return plan;
}

} // namespace zenvor::sandbox
