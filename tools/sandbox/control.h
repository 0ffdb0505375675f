#pragma once

#include "sandbox/fault_queue.h"
#include "sandbox/http_answer.h"
#include "sandbox/http_reader.h"
#include "sandbox/recorded_request.h"
#include "sandbox/report_store.h"

namespace zenvor::sandbox {

/// The developer's side of the service: the inbox page at / and everything below /sandbox/.
Answer answerDeveloper(const RequestHead &head, const QByteArray &body, FaultQueue &faults,
                       const RequestLog &requests, const ReportStore &reports);

} // namespace zenvor::sandbox
