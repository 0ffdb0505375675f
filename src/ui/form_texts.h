#pragma once

#include "client/feedback_category.h"

namespace zenvor {

QString sheetTitle(FeedbackCategory category);
QString messagePlaceholder(FeedbackCategory category);
QString title(BugOccurrenceFrequency frequency);

} // namespace zenvor
