#include "deviceinfo/device_info_provider.h"

#include "platform/bundle.h"
#include "platform/device.h"
#include "platform/locale.h"
#include "platform/screen.h"
#include "platform/window.h"

namespace zenvor {

using namespace Qt::StringLiterals;

DeviceInfo DeviceInfoProvider::makeDeviceInfo()
{
    const QRectF bounds = Screen::mainBounds();
    return {
        .model = Device::model(),
        .machine = Device::machine(),
        .osName = Device::systemName(),
        .osVersion = Device::systemVersion(),
        .locale = currentLocaleIdentifier(),
        .timeZone = currentTimeZoneIdentifier(),
        .screenWidth = bounds.width(),
        .screenHeight = bounds.height(),
        .interfaceStyle = currentInterfaceStyle(),
        .identifierForVendor = Device::identifierForVendor(Bundle::main()),
    };
}

AppInfo DeviceInfoProvider::makeAppInfo()
{
    const Bundle bundle = Bundle::main();
    return {
        .bundleId = bundle.identifier().value_or(QString()),
        .version = bundle.version().value_or(QString()),
        .build = bundle.build().value_or(QString()),
    };
}

QString DeviceInfoProvider::currentInterfaceStyle()
{
    switch (interfaceStyle(keyWindow())) {
    case InterfaceStyle::Light:
        return u"light"_s;
    case InterfaceStyle::Dark:
        return u"dark"_s;
    case InterfaceStyle::Unspecified:
        break;
    }
    return u"unspecified"_s;
}

} // namespace zenvor
