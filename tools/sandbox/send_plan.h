#pragma once

#include "sandbox/fault.h"
#include "sandbox/http_answer.h"
#include "sandbox/http_reader.h"

namespace zenvor::sandbox {

/// Everything that happens on the wire for one answer, in order: the 1xx heads, the delay, the head, the
/// body, what comes after. Without a fault it is an ordinary answer.
struct SendPlan
{
    enum class Ending { KeepAlive, Close, Stall, Cut, Reset };

    int status = 0; ///< 0: no status reaches the client
    QByteArray informational;
    int delayMs = 0;
    Headers headers; ///< those of the answer, without what only frames it
    QByteArray head; ///< already shortened where the plan ends inside it
    std::shared_ptr<BodySource> body; ///< null: none
    qint64 bodyLimit = -1; ///< stop after so many bytes; -1: at the end of the body
    bool isChunked = false;
    bool hasBadChunk = false;
    int dripMs = 0;
    bool dripsHead = false;
    Ending ending = Ending::KeepAlive;
};

/// \a base is the service's own answer, where the request was handled. Pure.
SendPlan planAnswer(const RequestHead &request, const Answer &base, bool mustClose);
SendPlan planFault(const RequestHead &request, const Fault &fault, const std::optional<Answer> &base,
                   bool mustClose);

} // namespace zenvor::sandbox
