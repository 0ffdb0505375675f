#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>
#include <zenvor/zenvor_version.h>

#include <QGuiApplication>
#include <QUrl>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    const bool isSet = zenvor::setReportServiceUrl(QUrl(QStringLiteral("https://reports.example")))
        && !zenvor::setReportServiceUrl(QUrl(QStringLiteral("http://reports.example")))
        && QByteArrayView(ZENVOR_VERSION) == "0.2.0";
    // No identifier of the application is set, so that this sends nothing.
    zenvor::Zenvor::shared().configure(QStringLiteral("token"), true);
    return isSet ? 0 : 1;
}
