#pragma once

#include <QString>

#include <optional>

namespace zenvor {

/// The device that a report comes from.
struct DeviceInfo
{
    QString model;
    QString machine;
    QString osName;
    QString osVersion;
    QString locale;
    QString timeZone;
    /// In points, as the screen is turned; 0 without a screen, always finite.
    double screenWidth = 0;
    double screenHeight = 0;
    /// "light", "dark" or "unspecified".
    QString interfaceStyle;
    std::optional<QString> identifierForVendor;
};

/// The application that a report comes from. What it does not state is empty.
struct AppInfo
{
    QString bundleId;
    QString version;
    QString build;
};

} // namespace zenvor
