#pragma once

#include <QString>
#include <QStringList>

namespace zenvor {

constexpr auto resourceBundleName = "ZenvorSDK_ZenvorSDK.bundle";

/// The folder of the library's resources: a host's bundle of that name in the application's own resources,
/// else the library's copy, which is compiled in, else one beside the executable. Found once, by the first
/// call. A program without any is wrongly packaged, and ends there with "unable to find bundle named
/// ZenvorSDK_ZenvorSDK". Any thread.
const QString &resourceBundle();

/// The bundle in the first of \a folders that holds one; empty if none does.
QString findResourceBundle(const QStringList &folders);

} // namespace zenvor
