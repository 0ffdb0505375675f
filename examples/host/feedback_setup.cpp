#include "host/feedback_setup.h"

#include <zenvor/report_service.h>
#include <zenvor/zenvor.h>

#include <QGuiApplication>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isSetUp = false;

} // namespace

bool setUpFeedback(const FeedbackOptions &options, QString *error)
{
    QGuiApplication::setDesktopFileName(options.bundleId); // by it the service knows the app
    if (options.token.isEmpty())
        return true;
    if (!options.service.isEmpty() && !zenvor::setReportServiceUrl(QUrl(options.service, QUrl::StrictMode))) {
        *error = u"--service %1 is not the origin of a report service: "
                 "https://HOST, or http on this machine as in http://127.0.0.1:8080."_s.arg(options.service);
        return false;
    }
    zenvor::Zenvor::shared().configure(options.token, true); // true: a shake opens the flow
    isSetUp = true;
    return true;
}

bool isFeedbackSetUp()
{
    return isSetUp;
}
