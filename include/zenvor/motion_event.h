#pragma once

#include <zenvor/zenvor_export.h>

#include <QEvent>

namespace zenvor {

/// The end of a movement of the device, sent to the key window. It is not accepted to begin with: a
/// window, or an event filter on it, that accepts the event keeps the movement to itself.
class ZENVOR_EXPORT MotionEvent : public QEvent
{
public:
    enum class Subtype {
        None = 0,
        Shake = 1,
    };

    explicit MotionEvent(Subtype subtype);
    ~MotionEvent() override;

    static Type eventType();
    Subtype subtype() const { return m_subtype; }
    MotionEvent *clone() const override;

private:
    Subtype m_subtype;
};

} // namespace zenvor
