#pragma once

#include "deviceinfo/device_info.h"

namespace zenvor {

/// Describes device and application for a report. Reads the platform afresh on every call, keeps
/// nothing and never fails. Main thread.
class DeviceInfoProvider
{
public:
    DeviceInfoProvider() = delete;

    static DeviceInfo makeDeviceInfo();

    /// The values are untrimmed, as the application states them.
    static AppInfo makeAppInfo();

private:
    static QString currentInterfaceStyle();
};

} // namespace zenvor
