#include "platform/device.h"

#include <TargetConditionals.h>

#if TARGET_OS_OSX
#include "platform/bundle.h"
#include "platform/vendor_identifier.h"

#include <QByteArray>
#include <QSysInfo>

#include <sys/sysctl.h>

#import <Foundation/Foundation.h>
#else
#import <UIKit/UIKit.h>
#endif

namespace zenvor {

#if TARGET_OS_OSX

QString Device::model()
{
    size_t size = 0;
    if (sysctlbyname("hw.model", nullptr, &size, nullptr, 0) != 0)
        return QSysInfo::productType();
    QByteArray name(static_cast<qsizetype>(size), '\0');
    if (sysctlbyname("hw.model", name.data(), &size, nullptr, 0) != 0)
        return QSysInfo::productType();
    return QString::fromUtf8(name.constData()); // up to the terminating NUL
}

QString Device::systemName()
{
    return QStringLiteral("macOS");
}

QString Device::systemVersion()
{
    @autoreleasepool {
        const NSOperatingSystemVersion version = [[NSProcessInfo processInfo] operatingSystemVersion];
        QString text = QString::number(version.majorVersion) + u'.' + QString::number(version.minorVersion);
        if (version.patchVersion > 0)
            text += u'.' + QString::number(version.patchVersion);
        return text;
    }
}

std::optional<QString> Device::identifierForVendor(const Bundle &bundle)
{
    return vendorIdentifier(QSysInfo::machineUniqueId(), bundle.vendor());
}

#else

QString Device::model()
{
    @autoreleasepool {
        return QString::fromNSString([[UIDevice currentDevice] model]);
    }
}

QString Device::systemName()
{
    @autoreleasepool {
        return QString::fromNSString([[UIDevice currentDevice] systemName]);
    }
}

QString Device::systemVersion()
{
    @autoreleasepool {
        return QString::fromNSString([[UIDevice currentDevice] systemVersion]);
    }
}

std::optional<QString> Device::identifierForVendor(const Bundle &)
{
    @autoreleasepool {
        NSUUID *const identifier = [[UIDevice currentDevice] identifierForVendor];
        if (!identifier)
            return std::nullopt;
        return QString::fromNSString([identifier UUIDString]).toUpper();
    }
}

#endif

} // namespace zenvor
