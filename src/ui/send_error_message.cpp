#include "ui/send_error_message.h"

#include "resources/string_table.h"

namespace zenvor {

using namespace Qt::StringLiterals;

QString userFacingSendErrorMessage(const QString &description)
{
    const auto trimmed = description.trimmed();
    if (trimmed.isEmpty())
        return localizedString("zenvor_send_error_default"_ba, u"Could not send report. Please try again."_s);
    const auto names = [phrases = trimmed.toLower()](QLatin1StringView phrase) {
        return phrases.contains(phrase);
    };
    if (names("plan limit reached"_L1))
        return localizedString(
            "zenvor_limit_reached_message"_ba,
            u"Plan limit reached. Open the Zenvor dashboard Billing page to upgrade and continue."_s);
    if (names("unable to resolve host"_L1) || names("could not connect"_L1))
        return localizedString("zenvor_network_error_message"_ba,
                               u"Network error. Please check your connection and try again."_s);
    if (names("timed out"_L1) || names("timeout"_L1))
        return localizedString("zenvor_timeout_error_message"_ba, u"Request timed out. Please try again."_s);
    return trimmed;
}

} // namespace zenvor
