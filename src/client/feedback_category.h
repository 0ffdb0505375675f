#pragma once

#include <QString>

namespace zenvor {

enum class FeedbackCategory { Improvement, Bug };

/// How often a bug happens.
enum class BugOccurrenceFrequency { FirstTime, FewTimes, SeveralTimes, ManyTimes, AlmostEveryTime };

/// The word of the report service: an improvement is sent as "feedback", the only other word it knows.
QString wireValue(FeedbackCategory category);
QString wireValue(BugOccurrenceFrequency frequency);

} // namespace zenvor
