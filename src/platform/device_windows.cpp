#include "platform/device.h"

#include "platform/bundle.h"
#include "platform/vendor_identifier.h"

#include <QOperatingSystemVersion>
#include <QSettings>
#include <QSysInfo>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// Windows 11 goes on calling itself Windows 10 in the registry; its builds begin here.
constexpr int firstBuildOfWindows11 = 22000;

} // namespace

QString Device::model()
{
    return QSysInfo::productType();
}

QString Device::machine()
{
    return QSysInfo::currentCpuArchitecture();
}

QString Device::systemName()
{
    const QSettings registry(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion"_s,
                             QSettings::Registry64Format);
    QString name = registry.value("ProductName"_L1).toString();
    if (name.isEmpty())
        return u"Windows"_s;
    if (QOperatingSystemVersion::current().microVersion() >= firstBuildOfWindows11)
        name.replace("Windows 10"_L1, "Windows 11"_L1);
    return name;
}

QString Device::systemVersion()
{
    return QSysInfo::kernelVersion();
}

std::optional<QString> Device::identifierForVendor(const Bundle &bundle)
{
    return vendorIdentifier(QSysInfo::machineUniqueId(), bundle.vendor());
}

} // namespace zenvor
