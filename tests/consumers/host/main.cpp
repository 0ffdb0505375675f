#include <zenvor/report_service.h>
#include <zenvor/zenvor_configuration.h>
#include <zenvor/zenvor_version.h>

#include <QUrl>

int main()
{
    const zenvor::ZenvorConfiguration configuration(QStringLiteral("token"), true);
    const bool isUsable = configuration.shakeToOpenEnabled()
        && zenvor::setReportServiceUrl(QUrl(QStringLiteral("https://reports.example")))
        && !zenvor::setReportServiceUrl(QUrl(QStringLiteral("http://reports.example")))
        && QByteArrayView(ZENVOR_VERSION) == "0.2.0";
    return isUsable ? 0 : 1;
}
