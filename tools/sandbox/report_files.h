#pragma once

#include "sandbox/http_answer.h"
#include "sandbox/http_reader.h"

namespace zenvor::sandbox {

class ReportStore;

/// A file of a report, or the part of it that the Range header asks for. \a idAndName is what the path says
/// behind /sandbox/reports/. The file is read while it is sent.
Answer reportFile(const RequestHead &head, const QByteArray &idAndName, const ReportStore &reports);

} // namespace zenvor::sandbox
