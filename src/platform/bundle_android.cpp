#include "platform/bundle.h"

#include <QCoreApplication>
#include <QJniObject>

namespace zenvor {

namespace {

// From API level 28 on the version code has 64 bits.
constexpr int firstLevelWithLongVersionCode = 28;

std::optional<QString> textOf(const QJniObject &string)
{
    return string.isValid() ? std::optional(string.toString()) : std::nullopt;
}

QJniObject packageInfo(const QJniObject &context, const QJniObject &packageName)
{
    const QJniObject manager =
        context.callObjectMethod("getPackageManager", "()Landroid/content/pm/PackageManager;");
    if (!manager.isValid())
        return {};
    return manager.callObjectMethod("getPackageInfo", "(Ljava/lang/String;I)Landroid/content/pm/PackageInfo;",
                                    packageName.object<jstring>(), jint(0));
}

jlong versionCode(const QJniObject &info)
{
    if (QNativeInterface::QAndroidApplication::sdkVersion() >= firstLevelWithLongVersionCode)
        return info.callMethod<jlong>("getLongVersionCode");
    return info.getField<jint>("versionCode");
}

} // namespace

Bundle Bundle::main()
{
    Bundle bundle;
    const QJniObject context = QNativeInterface::QAndroidApplication::context();
    if (!context.isValid())
        return bundle;
    const QJniObject packageName = context.callObjectMethod<jstring>("getPackageName");
    bundle.m_identifier = textOf(packageName);

    const QJniObject info = packageInfo(context, packageName);
    if (info.isValid()) {
        bundle.m_version = textOf(info.getObjectField<jstring>("versionName"));
        bundle.m_build = QString::number(versionCode(info));
    }
    return bundle;
}

} // namespace zenvor
