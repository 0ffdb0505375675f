#pragma once

#include <QString>

namespace zenvor {

/// The locale in use, as "de_DE": QLocale's default, so that an application that switches its own
/// language is followed. The "C" locale is named "en_US_POSIX".
QString currentLocaleIdentifier();

/// The IANA name of the system's time zone, as "Europe/Berlin"; "UTC" where the system names none. A
/// process that was given a rule instead of a name gets that rule.
QString currentTimeZoneIdentifier();

} // namespace zenvor
