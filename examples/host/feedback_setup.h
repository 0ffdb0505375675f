#pragma once

#include <QString>

/// Where the feedback of an app goes. A real app has these three in its source.
struct FeedbackOptions
{
    QString service; ///< empty: the one that the library was built for
    QString token; ///< empty: no feedback
    QString bundleId;
};

/// Sets the library up. To be called once there is an application object. Says in \a error what is wrong with
/// the options, and returns false then.
bool setUpFeedback(const FeedbackOptions &options, QString *error);

/// Whether there was a token.
bool isFeedbackSetUp();
