#include "resources/resource_bundle_accessor.h"

#include "platform/resource_folders.h"

#include <QDir>
#include <QMessageLogger>

// Without a namespace, as the macro wants it.
static void initResources()
{
    Q_INIT_RESOURCE(zenvor_resources); // a linker leaves it out of a static library otherwise
}

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

QString openResourceBundle()
{
    initResources();
    QStringList folders = resourceFolders();
    folders.append(u":/com.zenvor.sdk"_s); // the library's own
    folders.append(executableFolder());
    const auto bundle = findResourceBundle(folders);
    if (bundle.isEmpty())
        QMessageLogger("resource_bundle_accessor", 40, nullptr)
            .fatal("unable to find bundle named ZenvorSDK_ZenvorSDK");
    return bundle;
}

} // namespace

const QString &resourceBundle()
{
    static const QString bundle = openResourceBundle();
    return bundle;
}

QString findResourceBundle(const QStringList &folders)
{
    for (const auto &folder : folders) {
        const QDir bundle(folder + u'/' + QLatin1StringView(resourceBundleName));
        if (!folder.isEmpty() && bundle.exists() && bundle.isReadable())
            return bundle.path();
    }
    return {};
}

} // namespace zenvor
