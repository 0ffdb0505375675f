#include "open_dialog.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor_version.h>

#include <QFile>

namespace {

// A host without widgets is not to pay for them.
bool hasLoadedWidgets()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libQt6Widgets");
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const bool isSet = zenvor::setReportServiceUrl(QUrl(QStringLiteral("https://reports.example")))
        && !zenvor::setReportServiceUrl(QUrl(QStringLiteral("http://reports.example")))
        && QByteArrayView(ZENVOR_VERSION) == "0.2.0";
    // No identifier of the application is set, so that this sends nothing.
    zenvor::Zenvor::shared().configure(QStringLiteral("token"), true);
    QQuickWindow window;
    window.resize(390, 844);
    window.show();
    window.requestActivate();
    return isSet && opensTheDialog() && !hasLoadedWidgets() ? 0 : 1;
}
