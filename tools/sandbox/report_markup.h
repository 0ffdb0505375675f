#pragma once

#include <QString>

namespace zenvor::sandbox {

struct StoredReport;

/// One report as an article of the inbox. Whatever it says is text in it, never markup; moments are given in
/// the time zone of this machine.
QString reportMarkup(const StoredReport &report);

} // namespace zenvor::sandbox
