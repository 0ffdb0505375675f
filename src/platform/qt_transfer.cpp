#include "platform/qt_transfer.h"

#include "platform/http_redirect.h"
#include "platform/loopback.h"
#include "platform/qt_network.h"

#include <QNetworkProxy>

#include <utility>

namespace zenvor {

QtTransfer::QtTransfer(QtNetwork &network, HttpRequest request, StopToken stop, HttpSession::Done done,
                       QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_request(std::move(request))
    , m_stop(std::move(stop))
    , m_done(std::move(done))
{
}

void QtTransfer::begin()
{
    if (m_stop.stopRequested())
        return finish(UrlErrorCode::Cancelled);
    send(m_request.isSentOnce);
    m_stopCallback.emplace(m_stop, [this] {
        QMetaObject::invokeMethod(
            this, [this] { finish(UrlErrorCode::Cancelled); }, Qt::QueuedConnection);
    });
}

void QtTransfer::send(bool onFreshConnection)
{
    m_exchange.reset();
    m_manager = onFreshConnection ? nullptr : m_network.takeUsed();
    const bool isManagerUsed = m_manager != nullptr;
    if (!isManagerUsed)
        m_manager = std::make_unique<QNetworkAccessManager>();
    // Finding a proxy takes time, and none leads back to this machine.
    m_manager->setProxy(isLoopbackHost(m_request.url.host()) ? QNetworkProxy::NoProxy
                                                             : QNetworkProxy::DefaultProxy);
    m_exchange = std::make_unique<QtExchange>(
        m_request, *m_manager, isManagerUsed, m_network, [this](QtExchange::Ending ending) {
            // Later, when nothing of the exchange is on the stack, and it can be ended.
            QMetaObject::invokeMethod(
                this, [this, ending = std::move(ending)] { onEnded(ending); }, Qt::QueuedConnection);
        });
}

void QtTransfer::onEnded(QtExchange::Ending ending)
{
    if (!m_done)
        return;
    m_exchange.reset();
    if (ending.isConnectionUsable)
        m_network.giveBack(std::move(m_manager));
    if (ending.wasLostInPool && !m_request.isSentOnce)
        return send(true);
    if (const auto *response = std::get_if<HttpResponse>(&ending.result); response && isRedirect(*response))
        return follow(*response);
    finish(std::move(ending.result));
}

void QtTransfer::follow(const HttpResponse &redirect)
{
    if (m_redirects++ == HttpSession::maxRedirects)
        return finish(UrlErrorCode::TooManyRedirects);
    auto next = redirected(std::move(m_request), redirect);
    if (const auto *code = std::get_if<UrlErrorCode>(&next))
        return finish(*code);
    m_request = std::move(std::get<HttpRequest>(next));
    send(m_request.isSentOnce);
}

void QtTransfer::finish(HttpSession::Result result)
{
    if (!m_done)
        return;
    m_stopCallback.reset();
    m_exchange.reset();
    m_manager.reset();
    const auto done = std::exchange(m_done, nullptr);
    done(std::move(result));
    deleteLater();
}

} // namespace zenvor
