#include "platform/device.h"

#include "platform/bundle.h"
#include "platform/linux_files.h"
#include "platform/vendor_identifier.h"

#include <QFile>
#include <QSysInfo>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// Far above any honest file of this kind; a path that leads somewhere odd is not read to its end.
constexpr qint64 maxFileSize = 64 * 1024;

std::optional<QByteArray> contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(maxFileSize);
}

// The second file is the vendor's copy; it counts only where the first does not exist: they are not
// merged.
OsRelease osRelease()
{
    for (const QString &path : {u"/etc/os-release"_s, u"/usr/lib/os-release"_s}) {
        if (const auto text = contentsOf(path))
            return parseOsRelease(*text);
    }
    return {};
}

} // namespace

QString Device::model()
{
    if (const auto text = contentsOf(u"/sys/class/dmi/id/product_name"_s)) {
        if (auto name = parseProductName(*text))
            return *std::move(name);
    }
    return QSysInfo::productType();
}

QString Device::systemName()
{
    return osRelease().name;
}

QString Device::systemVersion()
{
    return osRelease().versionId;
}

std::optional<QString> Device::identifierForVendor(const Bundle &bundle)
{
    return vendorIdentifier(QSysInfo::machineUniqueId(), bundle.vendor());
}

} // namespace zenvor
