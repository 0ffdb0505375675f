#include "platform/resource_folders.h"

#include <QCoreApplication>

namespace zenvor {

using namespace Qt::StringLiterals;

QStringList resourceFolders()
{
    QStringList folders{u":"_s};
    const auto executables = executableFolder();
#if defined(Q_OS_ANDROID)
    folders.append(u"assets:"_s);
#elif defined(Q_OS_MACOS)
    if (!executables.isEmpty())
        folders.append(executables + "/../Resources"_L1);
#elif defined(Q_OS_DARWIN)
    if (!executables.isEmpty())
        folders.append(executables);
#else
    const auto name = QCoreApplication::applicationName();
    if (!executables.isEmpty() && !name.isEmpty())
        folders.append(executables + "/../share/"_L1 + name);
#endif
    return folders;
}

QString executableFolder()
{
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
}

} // namespace zenvor
