#include "feedback.h"

#include "host/feedback_setup.h"

#include <zenvor/report_service.h>
#include <zenvor/shake.h>

#include <QUrl>

bool Feedback::isAvailable() const
{
    return isFeedbackSetUp();
}

QString Feedback::service() const
{
    return zenvor::reportServiceUrl().toString();
}

void Feedback::shake()
{
    zenvor::sendShake();
}
