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

    FaultCase &inSmoke()
    {
        isSmoke = true;
        return *this;
    }
    FaultCase &by(Repeater whom)
    {
        repeater = whom;
        return *this;
    }
    FaultCase &onceOnly()
    {
        isPlayedOnce = true;
        return *this;
    }
    FaultCase &sending(int count)
    {
        requests = count;
        return *this;
    }
    FaultCase &lasting(Seconds forReader, Seconds forOthers)
    {
        reading = forReader;
        discarding = forOthers;
        return *this;
    }
    FaultCase &leavingBodyUnread()
    {
        leavesBodyUnread = true;
        return *this;
    }
    FaultCase &at(RequestKind kind, const Ending &other)
    {
        endings.insert(kind, other);
        return *this;
    }
    FaultCase &onQt(const Ending &other, const char *reason)
    {
        endingOnQt = other;
        reasonOnQt = QString::fromUtf8(reason);
        return *this;
    }
    /// Where what comes of it over Qt Network is nothing to rely on.
    FaultCase &notOnQt(const char *reason)
    {
        isPlayedOnQt = false;
        reasonOnQt = QString::fromUtf8(reason);
        return *this;
    }

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
