#include "client/feedback_category.h"

namespace zenvor {

using namespace Qt::StringLiterals;

QString wireValue(FeedbackCategory category)
{
    switch (category) {
    case FeedbackCategory::Improvement:
        return u"feedback"_s;
    case FeedbackCategory::Bug:
        return u"bug"_s;
    }
    Q_UNREACHABLE();
}

QString wireValue(BugOccurrenceFrequency frequency)
{
    switch (frequency) {
    case BugOccurrenceFrequency::FirstTime:
        return u"first_time"_s;
    case BugOccurrenceFrequency::FewTimes:
        return u"few_times"_s;
    case BugOccurrenceFrequency::SeveralTimes:
        return u"several_times"_s;
    case BugOccurrenceFrequency::ManyTimes:
        return u"many_times"_s;
    case BugOccurrenceFrequency::AlmostEveryTime:
        return u"almost_every_time"_s;
    }
    Q_UNREACHABLE();
}

} // namespace zenvor
