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

using namespace Qt::StringLiterals;

/// A headless Chromium with a profile of its own, steered through chromedriver. Whatever does not work
/// throws. The event loop runs meanwhile, so the page may come from a server in this thread.
class Browser
{
public:
    Browser()
    {
        m_network.setProxy(QNetworkProxy::NoProxy);
        startDriver();
        QByteArray wanted = R"({"capabilities": {"alwaysMatch": {"browserName": "chrome",
            "goog:loggingPrefs": {"browser": "ALL"}, "goog:chromeOptions": {"binary": "%1", "args": [
                "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                "--disable-background-networking", "--disable-component-update", "--disable-sync",
                "--no-proxy-server", "--user-data-dir=%2",
                "--disable-dev-shm-usage"]}}}})"; // small or absent in a container
        wanted.replace("%1", writeLauncher().toUtf8()).replace("%2", m_profile.path().toUtf8());
        const auto session = send("POST", u"/session"_s, QJsonDocument::fromJson(wanted).object());
        m_session = u"/session/"_s + session[u"sessionId"].toString();
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

    void open(const QUrl &url) { command("POST", u"/url"_s, {{u"url"_s, url.toString()}}); }

    /// What the body of a function returns in the page; a promise is waited for.
    QJsonValue run(const QString &script)
    {
        return command("POST", u"/execute/sync"_s, {{u"script"_s, script}, {u"args"_s, QJsonArray()}});
    }
    QJsonValue valueOf(const QString &expression) { return run(u"return (%1);"_s.arg(expression)); }

    /// Whether \a expression becomes true in time.
    bool becomesTrue(const QString &expression, int limitMs = 15000)
    {
        return QTest::qWaitFor([&] { return valueOf(expression).toBool(); }, limitMs);
    }

    /// What has focus gets the key.
    void type(QChar key)
    {
        QJsonArray actions;
        for (const auto &type : {u"keyDown"_s, u"keyUp"_s})
            actions << QJsonObject{{u"type"_s, type}, {u"value"_s, QString(key)}};
        const QJsonObject source{{u"type"_s, u"key"_s}, {u"id"_s, u"keyboard"_s}, {u"actions"_s, actions}};
        command("POST", u"/actions"_s, {{u"actions"_s, QJsonArray{source}}});
    }

    void setViewport(int width, int height)
    {
        devTools(
            u"Emulation.setDeviceMetricsOverride"_s,
            {{u"width"_s, width}, {u"height"_s, height}, {u"deviceScaleFactor"_s, 1}, {u"mobile"_s, false}});
    }

    /// \a scheme is "light" or "dark".
    void preferColorScheme(const QString &scheme)
    {
        const QJsonObject feature{{u"name"_s, u"prefers-color-scheme"_s}, {u"value"_s, scheme}};
        devTools(u"Emulation.setEmulatedMedia"_s, {{u"features"_s, QJsonArray{feature}}});
    }

    /// What went wrong on the pages since the last call, as the console says it.
    QStringList takeConsoleErrors()
    {
        const QJsonArray entries = command("POST", u"/se/log"_s, {{u"type"_s, u"browser"_s}}).toArray();
        QStringList errors;
        for (const QJsonValue entry : entries) {
            if (entry[u"level"] == u"SEVERE"_s || entry[u"level"] == u"WARNING"_s)
                errors << entry[u"message"].toString();
        }
        return errors;
    }

private:
    // A test that aborts must not leave a browser behind: each process is ended with the one that started it.
    QString writeLauncher()
    {
        QFile launcher(m_profile.filePath(u"launch"_s));
        launcher.open(QIODevice::WriteOnly);
        launcher.write("#!/bin/sh\nexec setpriv --pdeathsig TERM /usr/bin/chromium \"$@\"\n");
        launcher.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return launcher.fileName();
    }

    void startDriver()
    {
        m_driver.setProcessChannelMode(QProcess::MergedChannels);
        m_driver.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
        m_driver.start(u"/usr/bin/chromedriver"_s, {u"--port=0"_s});
        static const QRegularExpression started(u"started successfully on port ([0-9]+)"_s);
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
        command("POST", u"/goog/cdp/execute"_s, {{u"cmd"_s, name}, {u"params"_s, parameters}});
    }

    QJsonValue send(const QByteArray &method, const QString &path, const QJsonObject &body = {})
    {
        QNetworkRequest request(QUrl(u"http://127.0.0.1:%1%2"_s.arg(m_port).arg(path)));
        request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
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
