#pragma once

#include "platform/qt_exchange.h"
#include "platform/stop_token.h"

#include <QNetworkAccessManager>

#include <memory>
#include <optional>

namespace zenvor {

class QtNetwork;

/// A request from its start to its result, through redirects. On the session's thread; ends itself.
class QtTransfer final : public QObject
{
public:
    /// Not begun. \a network must outlive the transfer's work.
    QtTransfer(QtNetwork &network, HttpRequest request, StopToken stop, HttpSession::Done done,
               QObject *parent);

    void begin();

private:
    void send(bool onFreshConnection);
    void onEnded(QtExchange::Ending ending);
    void follow(const HttpResponse &redirect);
    void finish(HttpSession::Result result);

    QtNetwork &m_network;
    HttpRequest m_request;
    const StopToken m_stop;
    HttpSession::Done m_done;
    int m_redirects = 0;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    std::unique_ptr<QtExchange> m_exchange; // goes before the manager that it uses
    std::optional<StopCallback> m_stopCallback; // goes first: it calls this object
};

} // namespace zenvor
