#pragma once

#include <QSslConfiguration>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QNetworkAccessManager;

namespace zenvor {

class Clock;

/// What the transfers of one session have in common. On the session's thread.
///
/// Each request has a network manager to itself while it is under way: only so can it be given a fresh
/// connection, which Qt Network has no setting for, and only so does an answer that leaves a
/// connection out of step reach nobody else. Requests that follow one another use one manager with
/// its pooled connections.
class QtNetwork
{
public:
    /// \a caFile: trusted certificates in PEM form; empty: those that Qt trusts.
    QtNetwork(const Clock &clock, QString caFile);
    ~QtNetwork();
    QtNetwork(const QtNetwork &) = delete;
    QtNetwork &operator=(const QtNetwork &) = delete;

    const Clock &clock() const { return m_clock; }
    const QSslConfiguration &tls();

    /// A manager that may have pooled connections; null if none is idle.
    std::unique_ptr<QNetworkAccessManager> takeUsed();
    /// Keeps the connections of \a manager for the next request.
    void giveBack(std::unique_ptr<QNetworkAccessManager> manager);

private:
    const Clock &m_clock;
    const QString m_caFile;
    std::optional<QSslConfiguration> m_tls;
    std::vector<std::unique_ptr<QNetworkAccessManager>> m_idle;
};

} // namespace zenvor
