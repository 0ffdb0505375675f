#include "platform/qt_network.h"

#include <QNetworkAccessManager>
#include <QSslCertificate>

#include <utility>

namespace zenvor {
namespace {

// Each has a thread of Qt's, asleep, and the connections of the last two minutes.
constexpr size_t maxIdleManagers = 3;

} // namespace

QtNetwork::QtNetwork(const Clock &clock, QString caFile) : m_clock(clock), m_caFile(std::move(caFile))
{
}

QtNetwork::~QtNetwork() = default;

const QSslConfiguration &QtNetwork::tls()
{
    if (!m_tls) {
        m_tls = QSslConfiguration::defaultConfiguration();
        // A file without certificates leaves nothing to trust, as it should.
        if (!m_caFile.isEmpty())
            m_tls->setCaCertificates(QSslCertificate::fromPath(m_caFile));
    }
    return *m_tls;
}

std::unique_ptr<QNetworkAccessManager> QtNetwork::takeUsed()
{
    if (m_idle.empty())
        return nullptr;
    auto manager = std::move(m_idle.back());
    m_idle.pop_back();
    return manager;
}

void QtNetwork::giveBack(std::unique_ptr<QNetworkAccessManager> manager)
{
    if (m_idle.size() < maxIdleManagers)
        m_idle.push_back(std::move(manager));
}

} // namespace zenvor
