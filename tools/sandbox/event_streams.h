#pragma once

#include "sandbox/http_answer.h"

#include <QList>

#include <memory>

namespace zenvor::sandbox {

class EventStream;

/// The inboxes that are open somewhere, each on an answer that does not end and that says, at first and at
/// every change, which report is the newest (server-sent events). A slow reader gets only the last word.
class EventStreams
{
public:
    EventStreams();
    ~EventStreams();
    Q_DISABLE_COPY_MOVE(EventStreams)

    /// The answer to one inbox; 503 when too many are open. Its connection's end takes it out again.
    Answer open(const QString &newest);
    void publish(const QString &newest);

private:
    QList<std::weak_ptr<EventStream>> m_streams;
};

} // namespace zenvor::sandbox
