#include "feedback.h"

#include <zenvor/report_service.h>
#include <zenvor/shake.h>
#include <zenvor/zenvor.h>

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

bool isSetUp = false;

} // namespace

// All that a host does for the library. The rest of this file is for its command line.
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

bool Feedback::isAvailable() const
{
    return isSetUp;
}

QString Feedback::service() const
{
    return zenvor::reportServiceUrl().toString();
}

void Feedback::shake()
{
    zenvor::sendShake();
}

void addFeedbackOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        {u"service"_s, u"Origin of the report service: https, or http on this machine."_s, u"URL"_s},
        {u"token"_s, u"SDK token. Without it the app runs, but takes no feedback."_s, u"TOKEN"_s},
        {u"bundle-id"_s, u"Identifier of the app, which the token belongs to."_s, u"ID"_s,
         u"com.example.demo"_s},
    });
}

bool readFeedbackOptions(const QCommandLineParser &parser, FeedbackOptions *options, QString *error)
{
    *options = {.service = parser.value(u"service"_s),
                .token = parser.value(u"token"_s),
                .bundleId = parser.value(u"bundle-id"_s)};
    if (!parser.positionalArguments().isEmpty())
        *error = u"There are options only: "_s + parser.positionalArguments().constFirst() + u" is none."_s;
    for (const auto &name : {u"service"_s, u"token"_s, u"bundle-id"_s}) {
        if (parser.isSet(name) && parser.value(name).trimmed().isEmpty())
            *error = u"--%1 is empty."_s.arg(name);
    }
    if (error->isEmpty() && parser.isSet(u"service"_s) && !parser.isSet(u"token"_s))
        *error = u"--service needs --token: without a token nothing is sent there."_s;
    return error->isEmpty();
}
