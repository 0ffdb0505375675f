#pragma once

#include "sandbox/http_answer.h"

namespace zenvor::sandbox {

class ReportStore;

/// The inbox: every report, newest first, with what it says and what is attached to it.
Answer inboxPage(const ReportStore &reports);

} // namespace zenvor::sandbox
