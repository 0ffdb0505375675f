#pragma once

#include "client/feedback_category.h"
#include "deviceinfo/device_info.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace zenvor {

/// A report as the service receives it. The submission fills the two upload fields.
struct FeedbackReportPayload
{
    QString token;
    QString category;
    QString message;
    std::optional<QString> occurrenceFrequency;
    /// Part of the protocol; nothing fills it yet.
    std::optional<QString> steps;
    std::optional<QString> email;
    bool allowContact = false;
    std::optional<QString> screenshotUploadId;
    std::optional<QStringList> attachmentUploadIds;
    DeviceInfo device;
    AppInfo app;
    QString occurredAt;
};

/// What a user fills in, as typed.
struct FeedbackDraft
{
    FeedbackCategory category = FeedbackCategory::Bug;
    QString message;
    BugOccurrenceFrequency occurrenceFrequency = BugOccurrenceFrequency::FirstTime;
    QString email;
    bool allowContact = false;
};

/// \a text without white space and line breaks at its ends; nothing if none is left.
std::optional<QString> nonEmptyTrimmed(const QString &text);

/// The report made of \a draft at the moment \a now. What must not be sent is left out: an address
/// without the permission to use it, a frequency of anything but a bug. Nothing if the description
/// is blank: a report needs one.
std::optional<FeedbackReportPayload> makeFeedbackReportPayload(const FeedbackDraft &draft,
                                                               const QString &token, DeviceInfo device,
                                                               AppInfo app, const QDateTime &now);

/// Internet date-time in UTC, to the second, ending in "Z".
QString timeStamp(const QDateTime &moment);

} // namespace zenvor
