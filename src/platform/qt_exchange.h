#pragma once

#include "platform/http_message.h"
#include "platform/http_session.h"

#include <QByteArrayView>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;
class QNetworkReply;

namespace zenvor {

class Clock;
class QtNetwork;

/// One request and its answer, as Qt Network runs them: sent exactly once, no redirect followed. On the
/// session's thread.
class QtExchange final : public QObject
{
public:
    struct Ending
    {
        HttpSession::Result result;
        /// Whether the answer was taken to its end, so that its connection is in step.
        bool isConnectionUsable = false;
        /// Whether a pooled connection was lost before any answer, which says nothing about the
        /// service.
        bool wasLostInPool = false;
    };
    using Done = std::function<void(Ending)>;

    /// Sends \a request through \a manager, which must be the exchange's alone and outlive it;
    /// \a isManagerUsed: whether it has sent others before. Calls \a done once, not inside this call;
    /// what it calls must not end the exchange.
    QtExchange(HttpRequest request, QNetworkAccessManager &manager, bool isManagerUsed, QtNetwork &network,
               Done done);
    ~QtExchange() override;

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    void limitGathering();
    void onHead();
    void onReadable();
    void onFinished();
    void onSent(qint64 sent);
    void onTimer();

    bool discardsBody() const;
    void takeBody(QByteArrayView bytes);
    TimePoint deadline() const;
    void markActivity();
    void startTimer();
    UrlErrorCode errorCode() const;
    void end(HttpSession::Result result, bool isConnectionUsable = false);

    const HttpRequest m_request;
    const Clock &m_clock;
    Done m_done;
    std::unique_ptr<QNetworkReply> m_reply;
    QTimer m_timer;
    HttpResponse m_response;
    qint64 m_sent = 0;
    qsizetype m_discarded = 0;
    TimePoint m_lastActivity;
    std::optional<TimePoint> m_discardingSince;
    bool m_hasConnected = false;
    bool m_isPooled; ///< as far as Qt tells
    bool m_isUntrusted = false;
};

} // namespace zenvor
