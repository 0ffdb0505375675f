#pragma once

#include "sandbox/http_answer.h"

#include <optional>

namespace zenvor::sandbox {

class ReportStore;

/// What somebody needs who has not sent a report yet.
struct FirstSteps
{
    QString origin; ///< of the sandbox
    QString token; ///< one that may be shown, or a placeholder
    QString bundleId; ///< an app that the sandbox knows
};

/// The inbox: reports with what they say and what is attached to them, newest first. \a query is that of the
/// target: "before=<id>" leads to the reports that are older than that one.
Answer inboxPage(const ReportStore &reports, const FirstSteps &steps, const QByteArray &query);

/// The style, the script or the icon of the page; nothing if \a path is none of them.
std::optional<Answer> inboxResource(const QByteArray &path);

} // namespace zenvor::sandbox
