#pragma once

#include "sandbox/event_streams.h"
#include "sandbox/fault_queue.h"
#include "sandbox/http_reader.h"
#include "sandbox/inbox_page.h"
#include "sandbox/recorded_request.h"
#include "sandbox/report_store.h"

namespace zenvor::sandbox {

/// What the developer sees and steers.
struct DeveloperDesk
{
    FaultQueue &faults;
    EventStreams &events;
    const RequestLog &requests;
    const ReportStore &reports;
    FirstSteps firstSteps;
};

/// The developer's side of the service: the inbox page at / and everything below /sandbox/.
Answer answerDeveloper(const RequestHead &head, const QByteArray &body, const DeveloperDesk &desk);

} // namespace zenvor::sandbox
