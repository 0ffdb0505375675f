#include "faults/fault_case.h"

#include <array>

namespace zenvor::test {

using namespace Qt::StringLiterals;

namespace {

struct Request
{
    QLatin1StringView name;
    QLatin1StringView path;
};

// In the order of the kinds.
constexpr std::array<Request, std::size(allRequestKinds)> requests{{
    {"validate"_L1, "/v1/sdk/validate"_L1},
    {"init"_L1, "/v1/sdk/uploads/init"_L1},
    {"put"_L1, "/storage/"_L1},
    {"complete"_L1, "/v1/sdk/uploads/complete"_L1},
    {"report"_L1, "/v1/sdk/reports"_L1},
    {"ping"_L1, "/v1/sdk/devices/ping"_L1},
}};

} // namespace

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
    return requests.at(size_t(kind)).name;
}

QString nameOf(SessionKind session)
{
    return session == SessionKind::Curl ? u"curl"_s : u"qt"_s;
}

QString pathOf(RequestKind kind)
{
    return requests.at(size_t(kind)).path;
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
