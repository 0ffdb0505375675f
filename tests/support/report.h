#pragma once

#include "client/feedback_report.h"
#include "support/test_service.h"

namespace zenvor::test {

/// A report that the test service takes, made now.
inline FeedbackReportPayload report()
{
    using namespace Qt::StringLiterals;
    FeedbackDraft draft;
    draft.message = u"It breaks"_s;
    const DeviceInfo device{.model = u"m"_s,
                            .machine = u"x86_64"_s,
                            .osName = u"os"_s,
                            .osVersion = u"1"_s,
                            .locale = u"en_US"_s,
                            .timeZone = u"UTC"_s,
                            .screenWidth = 800,
                            .screenHeight = 600,
                            .interfaceStyle = u"light"_s,
                            .identifierForVendor = {}};
    const AppInfo app{.bundleId = TestService::bundleId(), .version = u"1"_s, .build = u"2"_s};
    return *makeFeedbackReportPayload(draft, TestService::token(), device, app,
                                      QDateTime::currentDateTimeUtc());
}

} // namespace zenvor::test
