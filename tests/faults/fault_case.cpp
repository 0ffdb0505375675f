#include "faults/fault_case.h"

namespace zenvor::test {

using namespace Qt::StringLiterals;

FaultCase &FaultCase::inSmoke()
{
    isSmoke = true;
    return *this;
}

FaultCase &FaultCase::by(Repeater whom)
{
    repeater = whom;
    return *this;
}

FaultCase &FaultCase::onceOnly()
{
    isPlayedOnce = true;
    return *this;
}

FaultCase &FaultCase::sending(int count)
{
    requests = count;
    return *this;
}

FaultCase &FaultCase::lasting(Seconds forReader, Seconds forOthers)
{
    reading = forReader;
    discarding = forOthers;
    return *this;
}

FaultCase &FaultCase::leavingBodyUnread()
{
    leavesBodyUnread = true;
    return *this;
}

FaultCase &FaultCase::at(RequestKind kind, const Ending &other)
{
    endings.insert(kind, other);
    return *this;
}

FaultCase &FaultCase::onQt(const Ending &other, const char *reason)
{
    endingOnQt = other;
    reasonOnQt = QString::fromUtf8(reason);
    return *this;
}

FaultCase &FaultCase::notOnQt(const char *reason)
{
    isPlayedOnQt = false;
    reasonOnQt = QString::fromUtf8(reason);
    return *this;
}

Ending FaultCase::endingFor(RequestKind kind, SessionKind session) const
{
    if (session == SessionKind::Qt && endingOnQt)
        return *endingOnQt;
    return endings.value(kind, ending);
}

bool readsBody(RequestKind kind)
{
    return kind == RequestKind::Validate || kind == RequestKind::Init || kind == RequestKind::Complete;
}

bool isUpload(RequestKind kind)
{
    return kind == RequestKind::Init || kind == RequestKind::Put || kind == RequestKind::Complete;
}

QString nameOf(RequestKind kind)
{
    switch (kind) {
    case RequestKind::Validate:
        return u"validate"_s;
    case RequestKind::Init:
        return u"init"_s;
    case RequestKind::Put:
        return u"put"_s;
    case RequestKind::Complete:
        return u"complete"_s;
    case RequestKind::Report:
        return u"report"_s;
    case RequestKind::Ping:
        return u"ping"_s;
    }
    Q_UNREACHABLE();
}

QString nameOf(SessionKind session)
{
    return session == SessionKind::Curl ? u"curl"_s : u"qt"_s;
}

QString pathOf(RequestKind kind)
{
    switch (kind) {
    case RequestKind::Validate:
        return u"/v1/sdk/validate"_s;
    case RequestKind::Init:
        return u"/v1/sdk/uploads/init"_s;
    case RequestKind::Put:
        return u"/storage/"_s;
    case RequestKind::Complete:
        return u"/v1/sdk/uploads/complete"_s;
    case RequestKind::Report:
        return u"/v1/sdk/reports"_s;
    case RequestKind::Ping:
        return u"/v1/sdk/devices/ping"_s;
    }
    Q_UNREACHABLE();
}

std::optional<RequestKind> requestKindOf(const QString &path)
{
    for (const auto kind : allRequestKinds) {
        if (path.startsWith(pathOf(kind)))
            return kind;
    }
    return std::nullopt;
}

} // namespace zenvor::test
