#include "ui/form_texts.h"

#include "resources/string_table.h"

namespace zenvor {

using namespace Qt::StringLiterals;

QString sheetTitle(FeedbackCategory category)
{
    switch (category) {
    case FeedbackCategory::Bug:
        return localizedString("zenvor_title_bug"_ba, u"Report a bug"_s);
    case FeedbackCategory::Improvement:
        return localizedString("zenvor_title_improvement"_ba, u"Suggest an improvement"_s);
    }
    Q_UNREACHABLE();
}

QString messagePlaceholder(FeedbackCategory category)
{
    switch (category) {
    case FeedbackCategory::Bug:
        return localizedString(
            "zenvor_message_hint_bug"_ba,
            u"Please be as detailed as possible. What did you expect and what happened instead?"_s);
    case FeedbackCategory::Improvement:
        return localizedString("zenvor_message_hint_improvement"_ba,
                               u"Share your idea and why it would help."_s);
    }
    Q_UNREACHABLE();
}

QString title(BugOccurrenceFrequency frequency)
{
    switch (frequency) {
    case BugOccurrenceFrequency::FirstTime:
        return localizedString("zenvor_occurrence_frequency_first_time"_ba, u"First time"_s);
    case BugOccurrenceFrequency::FewTimes:
        return localizedString("zenvor_occurrence_frequency_few_times"_ba, u"A few times (2-3)"_s);
    case BugOccurrenceFrequency::SeveralTimes:
        return localizedString("zenvor_occurrence_frequency_several_times"_ba, u"Several times (4-10)"_s);
    case BugOccurrenceFrequency::ManyTimes:
        return localizedString("zenvor_occurrence_frequency_many_times"_ba, u"Many times (10+)"_s);
    case BugOccurrenceFrequency::AlmostEveryTime:
        return localizedString("zenvor_occurrence_frequency_almost_every_time"_ba, u"Almost every time"_s);
    }
    Q_UNREACHABLE();
}

} // namespace zenvor
