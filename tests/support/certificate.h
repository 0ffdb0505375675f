#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <stdexcept>

namespace zenvor::test {

/// A fresh certificate for 127.0.0.1 that signs itself, and its key, in files that go with this object.
class Certificate
{
public:
    Certificate()
    {
        QProcess openssl;
        openssl.start(
            QStringLiteral("openssl"),
            QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                           "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -keyout %1 -out %2")
                .arg(keyFile(), certificateFile())
                .split(u' '));
        if (!openssl.waitForFinished() || openssl.exitCode() != 0)
            throw std::runtime_error("openssl cannot make a certificate");
    }

    QString certificateFile() const { return m_folder.filePath(QStringLiteral("certificate.pem")); }
    QString keyFile() const { return m_folder.filePath(QStringLiteral("key.pem")); }

private:
    QTemporaryDir m_folder;
};

} // namespace zenvor::test
