#pragma once

#include "sandbox/sandbox.h"

#include <QTemporaryDir>

#include <stdexcept>

namespace zenvor::test {

/// The sandbox on a free port of the loopback interface, with one token and a folder of its own.
class TestService
{
public:
    explicit TestService(QString certificateFile = {}, QString keyFile = {})
        : m_sandbox({.bundleIdsByToken = {{token(), bundleId()}},
                     .folder = m_folder.path(),
                     .requestHost = QStringLiteral("127.0.0.1"),
                     .port = 0,
                     .certificateFile = std::move(certificateFile),
                     .keyFile = std::move(keyFile)})
    {
        listen();
    }

    void listen()
    {
        QString error;
        if (!m_sandbox.listen(&error))
            throw std::runtime_error(error.toStdString());
    }

    static QString token() { return QStringLiteral("test-token"); }
    static QString bundleId() { return QStringLiteral("com.example.test"); }

    QUrl url(const QString &path = {}) const { return m_sandbox.url().resolved(QUrl(path)); }
    sandbox::Sandbox &sandbox() { return m_sandbox; }

    /// Forgets what happened, and misbehaves as \a faults (JSON) say.
    void reset(const QByteArray &faults = {})
    {
        m_sandbox.clearFaults();
        m_sandbox.clearRequests();
        QString error;
        if (!faults.isEmpty() && !m_sandbox.addFault(faults, &error))
            throw std::runtime_error(error.toStdString());
    }

    QList<sandbox::RecordedRequest> requests() const { return m_sandbox.requests(); }

    /// "METHOD path" of each request so far, without the query.
    QStringList requestLines() const
    {
        QStringList lines;
        for (const auto &request : m_sandbox.requests()) {
            const auto path = request.target.split('?').first();
            lines.append(QString::fromUtf8(request.method + ' ' + path));
        }
        return lines;
    }

private:
    QTemporaryDir m_folder;
    sandbox::Sandbox m_sandbox;
};

} // namespace zenvor::test
