#include "platform/device.h"

#include "platform/bundle.h"
#include "platform/vendor_identifier.h"

#include <QCoreApplication>
#include <QJniObject>

namespace zenvor {

using namespace Qt::StringLiterals;

QString Device::model()
{
    return QJniObject::getStaticObjectField<jstring>("android/os/Build", "MODEL").toString();
}

QString Device::systemName()
{
    return u"Android"_s;
}

QString Device::systemVersion()
{
    return QJniObject::getStaticObjectField<jstring>("android/os/Build$VERSION", "RELEASE").toString();
}

std::optional<QString> Device::identifierForVendor(const Bundle &bundle)
{
    const QJniObject context = QNativeInterface::QAndroidApplication::context();
    if (!context.isValid())
        return std::nullopt;
    const QJniObject resolver =
        context.callObjectMethod("getContentResolver", "()Landroid/content/ContentResolver;");
    const QJniObject key = QJniObject::fromString(u"android_id"_s); // Settings.Secure.ANDROID_ID
    const QJniObject androidId = QJniObject::callStaticObjectMethod(
        "android/provider/Settings$Secure", "getString",
        "(Landroid/content/ContentResolver;Ljava/lang/String;)Ljava/lang/String;", resolver.object(),
        key.object<jstring>());
    if (!androidId.isValid())
        return std::nullopt;
    // Before Android 8 the number was the same for all applications: the package name parts them.
    return vendorIdentifier(androidId.toString().toUtf8(), bundle.identifier().value_or(QString()));
}

} // namespace zenvor
