#pragma once

#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <stdexcept>

#include <sys/prctl.h>

namespace zenvor::test {

/// A headless Chromium with a profile of its own, steered through chromedriver. Whatever does not work
/// throws. The event loop runs meanwhile, so the page may come from a server in this thread.
class Browser
{
public:
    Browser()
    {
        m_network.setProxy(QNetworkProxy::NoProxy);
        startDriver();
        const QStringList arguments = {
            QStringLiteral("--headless=new"),
            QStringLiteral("--no-sandbox"),
            QStringLiteral("--disable-gpu"),
            QStringLiteral("--disable-quic"),
            QStringLiteral("--no-first-run"),
            QStringLiteral("--disable-background-networking"),
            QStringLiteral("--disable-component-update"),
            QStringLiteral("--disable-sync"),
            QStringLiteral("--no-proxy-server"),
            QStringLiteral("--disable-dev-shm-usage"), // small or absent in a container
            QStringLiteral("--user-data-dir=") + m_profile.path(),
        };
        const QJsonObject options{{QStringLiteral("binary"), writeLauncher()},
                                  {QStringLiteral("args"), QJsonArray::fromStringList(arguments)}};
        const QJsonObject wanted{
            {QStringLiteral("browserName"), QStringLiteral("chrome")},
            {QStringLiteral("goog:chromeOptions"), options},
            {QStringLiteral("goog:loggingPrefs"),
             QJsonObject{{QStringLiteral("browser"), QStringLiteral("ALL")}}},
        };
        const QJsonObject capabilities{{QStringLiteral("alwaysMatch"), wanted}};
        const auto session = send("POST", QStringLiteral("/session"),
                                  QJsonObject{{QStringLiteral("capabilities"), capabilities}});
        m_session = QStringLiteral("/session/") + session[u"sessionId"].toString();
    }
    ~Browser()
    {
        try {
            send("DELETE", m_session); // ends Chromium, too
        } catch (const std::exception &error) {
            qWarning("The browser does not end: %s", error.what());
        }
        m_driver.terminate();
        m_driver.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Browser)

    void open(const QUrl &url)
    {
        command("POST", QStringLiteral("/url"), {{QStringLiteral("url"), url.toString()}});
    }

    /// What the body of a function returns in the page; a promise is waited for.
    QJsonValue run(const QString &script)
    {
        return command("POST", QStringLiteral("/execute/sync"),
                       {{QStringLiteral("script"), script}, {QStringLiteral("args"), QJsonArray()}});
    }
    QJsonValue valueOf(const QString &expression)
    {
        return run(QStringLiteral("return (%1);").arg(expression));
    }

    /// Whether \a expression becomes true in time.
    bool becomesTrue(const QString &expression, int limitMs = 15000)
    {
        return QTest::qWaitFor([&] { return valueOf(expression).toBool(); }, limitMs);
    }

    /// What has focus gets the keys, one after the other.
    void type(const QString &keys)
    {
        QJsonArray actions;
        for (const QChar key : keys) {
            for (const auto *type : {"keyDown", "keyUp"})
                actions << QJsonObject{{QStringLiteral("type"), QString::fromLatin1(type)},
                                       {QStringLiteral("value"), QString(key)}};
        }
        const QJsonObject source{{QStringLiteral("type"), QStringLiteral("key")},
                                 {QStringLiteral("id"), QStringLiteral("keyboard")},
                                 {QStringLiteral("actions"), actions}};
        command("POST", QStringLiteral("/actions"), {{QStringLiteral("actions"), QJsonArray{source}}});
    }

    void setViewport(int width, int height)
    {
        devTools(QStringLiteral("Emulation.setDeviceMetricsOverride"),
                 {{QStringLiteral("width"), width},
                  {QStringLiteral("height"), height},
                  {QStringLiteral("deviceScaleFactor"), 1},
                  {QStringLiteral("mobile"), false}});
    }

    /// \a scheme is "light" or "dark".
    void preferColorScheme(const QString &scheme)
    {
        const QJsonObject feature{{QStringLiteral("name"), QStringLiteral("prefers-color-scheme")},
                                  {QStringLiteral("value"), scheme}};
        devTools(QStringLiteral("Emulation.setEmulatedMedia"),
                 {{QStringLiteral("features"), QJsonArray{feature}}});
    }

    /// What went wrong on the pages since the last call, as the console says it.
    QStringList takeConsoleErrors()
    {
        const QJsonArray entries =
            command("POST", QStringLiteral("/se/log"), {{QStringLiteral("type"), QStringLiteral("browser")}})
                .toArray();
        QStringList errors;
        for (const QJsonValue entry : entries) {
            if (entry[u"level"] == QStringLiteral("SEVERE") || entry[u"level"] == QStringLiteral("WARNING"))
                errors << entry[u"message"].toString();
        }
        return errors;
    }

    QByteArray screenshot()
    {
        return QByteArray::fromBase64(command("GET", QStringLiteral("/screenshot")).toString().toLatin1());
    }

private:
    // A test that aborts must not leave a browser behind: each process is ended with the one that started it.
    QString writeLauncher()
    {
        QFile launcher(m_profile.filePath(QStringLiteral("launch")));
        launcher.open(QIODevice::WriteOnly);
        launcher.write("#!/bin/sh\nexec setpriv --pdeathsig TERM /usr/bin/chromium \"$@\"\n");
        launcher.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return launcher.fileName();
    }

    void startDriver()
    {
        m_driver.setProcessChannelMode(QProcess::MergedChannels);
        m_driver.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
        m_driver.start(QStringLiteral("/usr/bin/chromedriver"), {QStringLiteral("--port=0")});
        static const QRegularExpression started(QStringLiteral("started successfully on port ([0-9]+)"));
        QByteArray said;
        const bool isReady = QTest::qWaitFor(
            [&] {
                said += m_driver.readAll();
                m_port = started.match(QString::fromUtf8(said)).captured(1).toInt();
                return m_port != 0 || m_driver.error() == QProcess::FailedToStart;
            },
            30000);
        if (!isReady || m_port == 0)
            throw std::runtime_error("chromedriver does not start; are chromium and chromium-driver there? "
                                     + said.toStdString());
    }

    QJsonValue command(const QByteArray &method, const QString &path, const QJsonObject &body = {})
    {
        return send(method, m_session + path, body);
    }

    void devTools(const QString &name, const QJsonObject &parameters)
    {
        command("POST", QStringLiteral("/goog/cdp/execute"),
                {{QStringLiteral("cmd"), name}, {QStringLiteral("params"), parameters}});
    }

    QJsonValue send(const QByteArray &method, const QString &path, const QJsonObject &body = {})
    {
        QNetworkRequest request(QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path)));
        request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
        request.setTransferTimeout(60000);
        const QByteArray bytes = method == "POST" ? QJsonDocument(body).toJson() : QByteArray();
        const std::unique_ptr<QNetworkReply> reply(m_network.sendCustomRequest(request, method, bytes));
        QEventLoop loop;
        QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        const QByteArray answer = reply->readAll();
        if (reply->error() != QNetworkReply::NoError)
            throw std::runtime_error("WebDriver: " + reply->errorString().toStdString() + ": "
                                     + answer.toStdString());
        return QJsonDocument::fromJson(answer)[u"value"];
    }

    QTemporaryDir m_profile; // goes after the browser that writes to it
    QNetworkAccessManager m_network;
    QProcess m_driver;
    int m_port = 0;
    QString m_session;
};

} // namespace zenvor::test
