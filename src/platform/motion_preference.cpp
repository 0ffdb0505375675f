#include "platform/motion_preference.h"

#include <QCoreApplication>
#include <QVariant>

#if defined(Q_OS_ANDROID)
#include <QJniObject>
#elif defined(Q_OS_WIN)
#include <qt_windows.h>
#endif

namespace zenvor {

bool prefersReducedMotion()
{
    const auto *application = QCoreApplication::instance();
    const auto setting = application ? application->property("zenvorReducedMotion") : QVariant();
    return setting.isValid() ? setting.toBool() : systemPrefersReducedMotion();
}

#if defined(Q_OS_ANDROID)

bool systemPrefersReducedMotion()
{
    const QJniObject context = QNativeInterface::QAndroidApplication::context();
    if (!context.isValid())
        return false;
    const QJniObject resolver =
        context.callObjectMethod("getContentResolver", "()Landroid/content/ContentResolver;");
    const QJniObject key = QJniObject::fromString(QStringLiteral("animator_duration_scale"));
    const auto scale =
        QJniObject::callStaticMethod<jfloat>("android/provider/Settings$Global", "getFloat",
                                             "(Landroid/content/ContentResolver;Ljava/lang/String;F)F",
                                             resolver.object(), key.object<jstring>(), jfloat(1));
    return scale == 0;
}

#elif defined(Q_OS_WIN)

bool systemPrefersReducedMotion()
{
    BOOL isAnimated = TRUE;
    return SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &isAnimated, 0) && !isAnimated;
}

#elif !defined(Q_OS_DARWIN)

bool systemPrefersReducedMotion()
{
    return false;
}

#endif

} // namespace zenvor
