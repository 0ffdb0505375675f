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
    const QByteArray id = QTimeZone::systemTimeZoneId();
    return id.isEmpty() ? u"UTC"_s : QString::fromUtf8(id);
}

} // namespace zenvor
