#include "client/feedback_report.h"

#include <utility>

namespace zenvor {

std::optional<QString> nonEmptyTrimmed(const QString &text)
{
    auto trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    return trimmed;
}

std::optional<FeedbackReportPayload> makeFeedbackReportPayload(const FeedbackDraft &draft,
                                                               const QString &token, DeviceInfo device,
                                                               AppInfo app, const QDateTime &now)
{
    const auto message = nonEmptyTrimmed(draft.message);
    if (!message)
        return std::nullopt;

    FeedbackReportPayload payload;
    payload.token = token;
    payload.category = wireValue(draft.category);
    payload.message = *message;
    if (draft.category == FeedbackCategory::Bug)
        payload.occurrenceFrequency = wireValue(draft.occurrenceFrequency);
    if (draft.allowContact)
        payload.email = nonEmptyTrimmed(draft.email);
    payload.allowContact = draft.allowContact;
    payload.device = std::move(device);
    payload.app = std::move(app);
    payload.occurredAt = timeStamp(now);
    return payload;
}

QString timeStamp(const QDateTime &moment)
{
    return moment.toUTC().toString(Qt::ISODate);
}

} // namespace zenvor
