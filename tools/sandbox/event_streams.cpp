#include "sandbox/event_streams.h"

#include <utility>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype streamLimit = 16;

QByteArray eventBytes(const QString &newest)
{
    return "data: "_ba + newest.toUtf8() + "\n\n"_ba;
}

} // namespace

/// The body of one such answer.
class EventStream final : public BodySource
{
public:
    explicit EventStream(const QString &newest)
        : m_pending("retry: 1000\n"_ba + eventBytes(newest)) // after a restart, a second is soon enough
    {
    }

    void say(const QString &newest)
    {
        m_pending = eventBytes(newest);
        if (m_resume)
            m_resume();
    }

    // An event is smaller than any limit that a reader has; half of one could not be replaced by the next.
    QByteArray read(qsizetype) override { return std::exchange(m_pending, {}); }
    qint64 size() const override { return -1; }
    bool isPaused() const override { return m_pending.isEmpty(); }
    void onResume(std::function<void()> resume) override { m_resume = std::move(resume); }

private:
    QByteArray m_pending;
    std::function<void()> m_resume;
};

EventStreams::EventStreams() = default;
EventStreams::~EventStreams() = default;

Answer EventStreams::open(const QString &newest)
{
    m_streams.removeIf([](const auto &stream) { return stream.expired(); });
    if (m_streams.size() >= streamLimit)
        return refusal(503, {u"the inbox is open too often"_s});
    const auto stream = std::make_shared<EventStream>(newest);
    m_streams << stream;
    Answer answer = bytesAnswer(200, "text/event-stream"_ba, {});
    answer.body = stream;
    return answer;
}

void EventStreams::publish(const QString &newest)
{
    const auto streams = m_streams; // a connection may end while it is written to
    for (const auto &weak : streams) {
        if (const auto stream = weak.lock())
            stream->say(newest);
    }
}

} // namespace zenvor::sandbox
