#include <zenvor/motion_event.h>

namespace zenvor {

MotionEvent::MotionEvent(Subtype subtype) : QEvent(eventType()), m_subtype(subtype)
{
    setAccepted(false);
}

MotionEvent::~MotionEvent() = default;

QEvent::Type MotionEvent::eventType()
{
    static const auto type = static_cast<Type>(registerEventType());
    return type;
}

MotionEvent *MotionEvent::clone() const
{
    return new MotionEvent(*this);
}

} // namespace zenvor
