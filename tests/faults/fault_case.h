#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace zenvor::test {

/// The requests that the library makes, each of which a fault can strike.
enum class RequestKind { Validate, Init, Put, Complete, Report, Ping };

constexpr RequestKind allRequestKinds[] = {RequestKind::Validate, RequestKind::Init,   RequestKind::Put,
                                           RequestKind::Complete, RequestKind::Report, RequestKind::Ping};

enum class SessionKind { Curl, Qt };

/// Where a request goes instead of to the service, for faults that begin before a service is reached.
enum class Detour {
    None,
    ClosedPort, ///< nobody listens
    UnknownHost, ///< a name that cannot be looked up
    UntrustedService, ///< https, with a certificate that nobody vouches for
    PlainService, ///< https to a port that speaks http
    SecureService, ///< https, with a certificate that the session trusts; the fault is played there
};

/// What an exchange comes to, whoever asked.
struct Ending
{
    enum class Kind {
        Answer, ///< 2xx, with the body that belongs there
        UnreadableAnswer, ///< 2xx, with a body that says nothing to who reads it
        Status, ///< another status
        Failure, ///< no answer; the code is that of the platform's URL errors
    };

    Kind kind = Kind::Answer;
    int code = 0;
    QString detail = {}; ///< of a status: what the body explains
};

/// One row of the table: a fault, and what the exchange that it strikes comes to.
struct FaultCase
{
    /// Who sends a request again by itself, when a pooled connection was lost under it.
    enum class Repeater { Nobody, Anybody, QtOnly };

    /// How long an exchange may take, in seconds of the injected clock.
    struct Seconds
    {
        double least = 0;
        double most = 0;
    };

    QString name;
    QByteArray fault; ///< for the sandbox; {service} and {closed} stand for the origins of those
    Detour detour = Detour::None;
    Ending ending;
    QMap<RequestKind, Ending> endings = {}; ///< where the kind of the request matters
    std::optional<Ending> endingOnQt = {};
    QString reasonOnQt = {}; ///< why the session on Qt Network may differ, or is left out; shown by --list
    Repeater repeater = Repeater::Nobody;
    int requests = 1; ///< that one exchange puts on the wire
    Seconds reading = {};
    Seconds discarding = {}; ///< where nobody reads the body
    bool isPlayedOnce =
        false; ///< strikes the first request only: what follows is part of the fault's own story
    bool isSmoke = false;
    bool leavesBodyUnread = false; ///< the service does not take in what is sent to it
    bool isPlayedOnQt = true;

    FaultCase &inSmoke();
    FaultCase &by(Repeater whom);
    FaultCase &onceOnly();
    FaultCase &sending(int count);
    FaultCase &lasting(Seconds forReader, Seconds forOthers);
    FaultCase &leavingBodyUnread();
    FaultCase &at(RequestKind kind, const Ending &other);
    FaultCase &onQt(const Ending &other, const char *reason);
    /// Where what comes of it over Qt Network is nothing to rely on.
    FaultCase &notOnQt(const char *reason);

    Ending endingFor(RequestKind kind, SessionKind session) const;
};

/// Whether the library reads the body of a 2xx answer to such a request.
bool readsBody(RequestKind kind);
bool isUpload(RequestKind kind);

/// As in the names of pairs.
QString nameOf(RequestKind kind);
QString nameOf(SessionKind session);
/// The path under which the service knows such requests; of an upload's bytes the folder.
QString pathOf(RequestKind kind);
std::optional<RequestKind> requestKindOf(const QString &path);

} // namespace zenvor::test
