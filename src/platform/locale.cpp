#include "platform/locale.h"

#include <QLocale>
#include <QTimeZone>

namespace zenvor {

using namespace Qt::StringLiterals;

QString currentLocaleIdentifier()
{
    const QLocale locale;
    return locale.language() == QLocale::C ? u"en_US_POSIX"_s : locale.name();
}

QString currentTimeZoneIdentifier()
{
    const auto id = QString::fromUtf8(QTimeZone::systemTimeZoneId());
    // The variable TZ may name the zone by its file.
    const auto name = id.section("/zoneinfo/"_L1, -1);
    return name.isEmpty() ? u"UTC"_s : name;
}

} // namespace zenvor
