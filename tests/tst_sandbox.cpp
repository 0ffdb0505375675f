#include "sandbox/sandbox.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSslSocket>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace zenvor::sandbox;
using namespace Qt::StringLiterals;

namespace {

constexpr auto pingPath = "/v1/sdk/devices/ping";
constexpr auto initPath = "/v1/sdk/uploads/init";
constexpr auto completePath = "/v1/sdk/uploads/complete";
constexpr auto reportPath = "/v1/sdk/reports";

struct Reply
{
    int status = 0;
    QByteArray head;
    QByteArray body;

    QJsonObject json() const { return QJsonDocument::fromJson(body).object(); }
    QByteArray header(const QByteArray &name) const
    {
        const auto match = QRegularExpression(u"\r\n%1: ([^\r]*)"_s.arg(QString::fromLatin1(name)),
                                              QRegularExpression::CaseInsensitiveOption)
                               .match(QString::fromLatin1(head));
        return match.captured(1).toLatin1();
    }
};

/// A client that knows no more of HTTP than where an answer ends.
class RawClient
{
public:
    explicit RawClient(const QUrl &origin, std::unique_ptr<QTcpSocket> with = std::make_unique<QTcpSocket>())
        : socket(std::move(with))
    {
        if (auto *tls = qobject_cast<QSslSocket *>(socket.get())) {
            tls->setPeerVerifyMode(QSslSocket::VerifyNone);
            tls->connectToHostEncrypted(origin.host(), static_cast<quint16>(origin.port()));
        } else {
            socket->connectToHost(origin.host(), static_cast<quint16>(origin.port()));
        }
    }

    void send(const QByteArray &bytes) { socket->write(bytes); }
    bool hasEnded() const { return socket->state() == QAbstractSocket::UnconnectedState; }

    /// The next answer; status 0 if none comes whole.
    Reply receive(int limitMs = 10000)
    {
        Reply reply;
        const bool isWhole = QTest::qWaitFor([&] { return take(reply); }, limitMs);
        return isWhole ? reply : Reply();
    }

    Reply exchange(const QByteArray &bytes)
    {
        send(bytes);
        return receive();
    }

    QByteArray received;
    std::unique_ptr<QTcpSocket> socket;

private:
    bool take(Reply &reply)
    {
        received += socket->readAll();
        const qsizetype end = received.indexOf("\r\n\r\n");
        if (end < 0)
            return false;
        reply.head = received.left(end + 2);
        reply.status = reply.head.mid(9, 3).toInt();
        const qint64 length = reply.header("Content-Length"_ba).toLongLong();
        if (received.size() < end + 4 + length)
            return false;
        reply.body = received.mid(end + 4, length);
        received.remove(0, end + 4 + length);
        return true;
    }
};

/// A client on the system's own calls, which tell an orderly end of a connection from a reset.
class SystemClient
{
public:
    explicit SystemClient(const QUrl &origin) : m_fd(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<quint16>(origin.port()));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::connect(m_fd, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    }
    ~SystemClient() { ::close(m_fd); }
    Q_DISABLE_COPY_MOVE(SystemClient)

    qint64 send(const QByteArray &bytes)
    {
        return ::send(m_fd, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    }

    /// "open", "ended" or "reset", after reading what is there.
    QString state()
    {
        char buffer[65536];
        ssize_t size = 0;
        while (m_state == u"open"_s && (size = ::recv(m_fd, buffer, sizeof buffer, 0)) > 0)
            received.append(buffer, size);
        // The system tells of a reset once only.
        if (m_state == u"open"_s && size == 0)
            m_state = u"ended"_s;
        else if (m_state == u"open"_s && errno == ECONNRESET)
            m_state = u"reset"_s;
        return m_state;
    }

    QByteArray received;

private:
    int m_fd;
    QString m_state = u"open"_s;
};

QByteArray request(const QByteArray &method, const QByteArray &target, const QByteArray &body = {},
                   const QByteArray &headers = "Content-Type: application/json\r\n"_ba)
{
    return method + ' ' + target + " HTTP/1.1\r\nHost: 127.0.0.1\r\n"_ba + headers + "Content-Length: "_ba
        + QByteArray::number(body.size()) + "\r\n\r\n"_ba + body;
}

QByteArray post(const QByteArray &path, const QJsonObject &object)
{
    return request("POST"_ba, path, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QJsonObject caller()
{
    return {{u"token"_s, u"first-token"_s}, {u"bundle_id"_s, u"com.example.app"_s}};
}

QJsonObject with(QJsonObject object, const QJsonObject &more)
{
    for (auto it = more.begin(); it != more.end(); ++it)
        object.insert(it.key(), it.value());
    return object;
}

QJsonObject goodPing()
{
    return with(caller(), {{u"platform"_s, u"ios"_s}, {u"device_id"_s, u"AB-12"_s}});
}

QJsonObject goodInit(qint64 bytes = 8)
{
    return with(caller(),
                {{u"kind"_s, u"screenshot"_s}, {u"mime_type"_s, u"image/png"_s}, {u"bytes"_s, bytes}});
}

QJsonObject goodReport()
{
    const QJsonObject device{
        {u"model"_s, u"Desk"_s},    {u"machine"_s, u"x86_64"_s},  {u"os_name"_s, u"Debian"_s},
        {u"os_version"_s, u"12"_s}, {u"locale"_s, u"en_US"_s},    {u"time_zone"_s, u"Europe/Berlin"_s},
        {u"screen_width"_s, 1920},  {u"screen_height"_s, 1080.5}, {u"interface_style"_s, u"dark"_s}};
    return {
        {u"token"_s, u"first-token"_s},
        {u"category"_s, u"bug"_s},
        {u"message"_s, u"It <b>breaks</b>"_s},
        {u"allow_contact"_s, true},
        {u"email"_s, u"a@example.com"_s},
        {u"occurred_at"_s, u"2026-11-14T23:35:30Z"_s},
        {u"device"_s, device},
        {u"app"_s,
         QJsonObject{{u"bundle_id"_s, u"com.example.app"_s}, {u"version"_s, u"1"_s}, {u"build"_s, u"2"_s}}}};
}

const QByteArray pngBytes = "\x89PNG\r\n\x1a\n"_ba;

} // namespace

class TestSandbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesEachDeviationOfABody_data();
    void namesEachDeviationOfABody();
    void answersFourHundredToWhatIsNotJson();
    void tellsTheTokenFromItsApp();
    void keepsAReportWithItsUpload();
    void judgesThePutToTheLetter_data();
    void judgesThePutToTheLetter();
    void completesOnlyWhatArrivedUnderItsEtag();
    void takesOnlyCompletedUploadsOfTheSameToken();
    void keepsUploadsAndReportsOverARestart();
    void listensAgainOnTheSamePort();
    void readsARequestHoweverItIsSent_data();
    void readsARequestHoweverItIsSent();
    void takesLargeUploadsAtTheSameTime();
    void leavesNothingOfAnUploadThatBrokeOff();
    void breaksAnAnswerOff_data();
    void breaksAnAnswerOff();
    void playsFaultyAnswers_data();
    void playsFaultyAnswers();
    void takesItsTime_data();
    void takesItsTime();
    void neverBuffersAnEndlessAnswer();
    void answersBeforeTheBodyOrLeavesItUnread();
    void storesTheReportBeforeItMisbehaves();
    void countsSkippedAndPlayedFaults();
    void refusesWhatIsNoFault_data();
    void refusesWhatIsNoFault();
    void isControlledOverHttp();
    void servesNothingOutsideAReport_data();
    void servesNothingOutsideAReport();
    void answersOnlyToLoopbackNames_data();
    void answersOnlyToLoopbackNames();
    void speaksTls();

private:
    std::unique_ptr<Sandbox> startSandbox(const QString &certificate = {}, const QString &key = {});
    void misbehave(const QByteArray &json);
    Reply ask(const QByteArray &bytes);
    QJsonObject reserve(qint64 bytes);
    QByteArray put(const QJsonObject &init, const QByteArray &bytes);
    QString uploadWhole(const QByteArray &bytes);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Sandbox> m_sandbox;
};

std::unique_ptr<Sandbox> TestSandbox::startSandbox(const QString &certificate, const QString &key)
{
    SandboxOptions options;
    options.bundleIdsByToken = {{u"first-token"_s, u"com.example.app"_s},
                                {u"other-token"_s, u"com.example.app"_s}};
    options.folder = m_folder->path();
    options.certificateFile = certificate;
    options.keyFile = key;
    auto sandbox = std::make_unique<Sandbox>(options);
    QString error;
    if (!sandbox->listen(&error))
        qFatal("%s", qPrintable(error));
    return sandbox;
}

void TestSandbox::init()
{
    m_sandbox.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    m_sandbox = startSandbox();
}

void TestSandbox::misbehave(const QByteArray &json)
{
    QString error;
    QVERIFY2(m_sandbox->addFault(json, &error), qPrintable(error));
}

Reply TestSandbox::ask(const QByteArray &bytes)
{
    RawClient client(m_sandbox->url());
    return client.exchange(bytes);
}

QJsonObject TestSandbox::reserve(qint64 bytes)
{
    return ask(post(initPath, goodInit(bytes))).json();
}

QByteArray TestSandbox::put(const QJsonObject &init, const QByteArray &bytes)
{
    const QByteArray target =
        init.value("upload_url"_L1).toString().toLatin1().mid(m_sandbox->url().toEncoded().size());
    const QJsonObject required = init.value("required_headers"_L1).toObject();
    QByteArray headers;
    for (auto it = required.begin(); it != required.end(); ++it)
        headers += it.key().toLatin1() + ": "_ba + it->toString().toLatin1() + "\r\n"_ba;
    return request("PUT"_ba, target, bytes, headers);
}

QString TestSandbox::uploadWhole(const QByteArray &bytes)
{
    const QJsonObject init = reserve(bytes.size());
    const QJsonValue id = init.value("upload_id"_L1);
    const QString etag = QString::fromLatin1(ask(put(init, bytes)).header("ETag"_ba));
    const Reply completed =
        ask(post(completePath, with(caller(), {{u"upload_id"_s, id}, {u"etag"_s, etag}})));
    return completed.status == 200 ? id.toString() : QString();
}

void TestSandbox::namesEachDeviationOfABody_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QJsonObject>("good");
    QTest::addColumn<QString>("key"); // "device.model": a key of an object in the body
    QTest::addColumn<QJsonValue>("value"); // undefined: the key is taken out
    QTest::addColumn<QString>("named");

    const auto row = [](const char *name, const char *path, const QJsonObject &good, const QString &key,
                        const QJsonValue &value, const QString &named) {
        QTest::newRow(name) << QByteArray(path) << good << key << value << named;
    };
    const auto report = [&](const char *name, const QString &key, const QJsonValue &value,
                            const QString &named) {
        row(name, reportPath, goodReport(), key, value, named);
    };
    const QJsonValue gone(QJsonValue::Undefined);
    row("ping: no device", pingPath, goodPing(), u"device_id"_s, gone, u"device_id is missing"_s);
    row("ping: device is null", pingPath, goodPing(), u"device_id"_s, QJsonValue::Null,
        u"device_id is null"_s);
    row("ping: device padded", pingPath, goodPing(), u"device_id"_s, u" AB"_s, u"device_id is not trimmed"_s);
    row("ping: other platform", pingPath, goodPing(), u"platform"_s, u"linux"_s, u"platform must be"_s);
    row("ping: unknown key", pingPath, goodPing(), u"os"_s, u"x"_s, u"os is not a known key"_s);
    row("init: bytes 0", initPath, goodInit(), u"bytes"_s, 0, u"bytes must be more"_s);
    row("init: half a byte", initPath, goodInit(), u"bytes"_s, 1.5, u"bytes must be an integer"_s);
    row("init: bytes as text", initPath, goodInit(), u"bytes"_s, u"8"_s, u"bytes must be an integer"_s);
    row("init: other kind", initPath, goodInit(), u"kind"_s, u"photo"_s, u"kind must be one of"_s);
    row("init: other type", initPath, goodInit(), u"mime_type"_s, u"image/heic"_s,
        u"mime_type must be one of"_s);
    row("init: upper case type", initPath, goodInit(), u"mime_type"_s, u"Image/png"_s,
        u"mime_type must be one of"_s);
    row("init: type of the other kind", initPath, goodInit(), u"mime_type"_s, u"video/mp4"_s,
        u"does not go with"_s);
    row("complete: never issued", completePath, caller(), u"upload_id"_s, u"00ff"_s, u"never issued"_s);
    report("other category", u"category"_s, u"improvement"_s, u"category must be one of"_s);
    report("other frequency", u"occurrence_frequency"_s, u"often"_s,
           u"occurrence_frequency must be one of"_s);
    report("empty message", u"message"_s, u""_s, u"message is empty"_s);
    report("padded message", u"message"_s, u"text\n"_s, u"message is not trimmed"_s);
    report("padded address", u"email"_s, u"a@example.com "_s, u"email is not trimmed"_s);
    report("address without permission", u"allow_contact"_s, false, u"email must be left out"_s);
    report("permission as number", u"allow_contact"_s, 1, u"allow_contact must be true or false"_s);
    report("fraction of a second", u"occurred_at"_s, u"2026-11-14T23:35:30.5Z"_s, u"occurred_at must be"_s);
    report("local time", u"occurred_at"_s, u"2026-11-14T23:35:30+01:00"_s, u"occurred_at must be"_s);
    report("no such day", u"occurred_at"_s, u"2026-02-30T23:35:30Z"_s, u"occurred_at must be"_s);
    report("device without model", u"device.model"_s, gone, u"device.model is missing"_s);
    report("width as text", u"device.screen_width"_s, u"1920"_s, u"device.screen_width must be a number"_s);
    report("other style", u"device.interface_style"_s, u"blue"_s, u"device.interface_style must be"_s);
    report("vendor id is null", u"device.identifier_for_vendor"_s, QJsonValue::Null,
           u"identifier_for_vendor is null"_s);
    report("app without build", u"app.build"_s, gone, u"app.build is missing"_s);
    report("unknown key of the app", u"app.name"_s, u"x"_s, u"app.name is not a known key"_s);
    report("empty array of ids", u"attachment_upload_ids"_s, QJsonArray(),
           u"attachment_upload_ids is empty"_s);
    report("ids that are numbers", u"attachment_upload_ids"_s, QJsonArray{1},
           u"must be an array of strings"_s);
    report("six ids", u"attachment_upload_ids"_s, QJsonArray{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s},
           u"more than 5 ids"_s);
    report("one id twice", u"attachment_upload_ids"_s, QJsonArray{u"a"_s, u"a"_s},
           u"names an upload twice"_s);
    report("id never issued", u"attachment_upload_ids"_s, QJsonArray{u"a"_s}, u"a was never issued"_s);
    report("screenshot not listed", u"screenshot_upload_id"_s, u"a"_s,
           u"screenshot_upload_id is not among"_s);
    row("frequency of an improvement", reportPath, with(goodReport(), {{u"category"_s, u"feedback"_s}}),
        u"occurrence_frequency"_s, u"many_times"_s, u"occurrence_frequency goes only with"_s);
}

void TestSandbox::namesEachDeviationOfABody()
{
    QFETCH(QByteArray, path);
    QFETCH(QJsonObject, good);
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    QFETCH(QString, named);
    QStringList lines;
    connect(m_sandbox.get(), &Sandbox::logged, this, [&](const QString &line) { lines << line; });

    const QString outer = key.section(u'.', 0, 0);
    QJsonObject inner = key.contains(u'.') ? good.value(outer).toObject() : good;
    const QString last = key.section(u'.', -1);
    value.isUndefined() ? inner.remove(last) : void(inner.insert(last, value));
    const QJsonObject body = key.contains(u'.') ? with(good, {{outer, inner}}) : inner;

    const Reply reply = ask(post(path, body));
    QCOMPARE(reply.status, 422);
    const QJsonValue message = reply.json().value("message"_L1);
    QVERIFY(message.isString() || message.toArray().size() > 1);
    QVERIFY2(reply.body.contains(named.toUtf8()), reply.body.constData());
    QVERIFY2(lines.join(u'\n').contains(named), qPrintable(lines.join(u'\n')));
    QVERIFY(m_sandbox->reports().isEmpty());
}

void TestSandbox::answersFourHundredToWhatIsNotJson()
{
    QCOMPARE(ask(request("POST"_ba, pingPath, "{\"token\":"_ba)).status, 400);
    QCOMPARE(ask(request("POST"_ba, pingPath, {})).status, 400);
    QCOMPARE(ask(request("POST"_ba, pingPath, "[1]"_ba)).status, 422);
    const QByteArray good = QJsonDocument(goodPing()).toJson();
    const Reply asText = ask(request("POST"_ba, pingPath, good, "Content-Type: text/plain\r\n"_ba));
    QCOMPARE(asText.status, 422);
    QVERIFY(asText.body.contains("Content-Type"));
    QCOMPARE(ask(request("POST"_ba, pingPath, good, "content-type: application/json; charset=utf-8\r\n"_ba))
                 .status,
             200);
    const Reply asGet = ask(request("GET"_ba, pingPath));
    QCOMPARE(asGet.status, 405);
    QCOMPARE(asGet.header("Allow"_ba), "POST"_ba);
    QVERIFY(ask(post("/v1/sdk/other"_ba, {})).json().contains("error"_L1));
}

void TestSandbox::tellsTheTokenFromItsApp()
{
    const QJsonObject otherApp{{u"bundle_id"_s, u"com.example.other"_s}};
    const QJsonObject otherToken{{u"token"_s, u"nobody"_s}};
    QCOMPARE(ask(post("/v1/sdk/validate"_ba, caller())).body, R"({"match":true,"ok":true})"_ba);
    QCOMPARE(ask(post("/v1/sdk/validate"_ba, with(caller(), otherApp))).body,
             R"({"match":false,"ok":true})"_ba);
    QCOMPARE(ask(post("/v1/sdk/validate"_ba, with(caller(), otherToken))).status, 401);
    QCOMPARE(ask(post(pingPath, with(goodPing(), otherApp))).status, 403);
    QCOMPARE(ask(post(reportPath, with(goodReport(), otherToken))).status, 401);
}

void TestSandbox::keepsAReportWithItsUpload()
{
    QSignalSpy received(m_sandbox.get(), &Sandbox::reportReceived);
    const QByteArray picture = pngBytes + QByteArray(300000, 'p');
    const QJsonObject init = reserve(picture.size());
    const Reply stored = ask(put(init, picture));
    QCOMPARE(stored.header("ETag"_ba),
             '"' + QCryptographicHash::hash(picture, QCryptographicHash::Md5).toHex() + '"');
    const RecordedRequest recorded = m_sandbox->requests().last();
    QCOMPARE(m_sandbox->url().toString().toLatin1() + recorded.target,
             init.value("upload_url"_L1).toString().toLatin1());
    QVERIFY(recorded.headers.contains(qMakePair("Content-Type"_ba, "image/png"_ba)));
    QCOMPARE(recorded.bodySize, picture.size());

    const QString id = uploadWhole(picture);
    const Reply sent = ask(post(
        reportPath,
        with(goodReport(), {{u"attachment_upload_ids"_s, QJsonArray{id}}, {u"screenshot_upload_id"_s, id}})));
    QCOMPARE(sent.status, 200);
    QCOMPARE(received.size(), 1);
    const StoredReport report = m_sandbox->reports().newest();
    QCOMPARE(report.body.value("message"_L1).toString(), u"It <b>breaks</b>"_s);
    const QByteArray base = "/sandbox/reports/"_ba + report.id.toLatin1();
    const Reply served = ask(request("GET"_ba, base + "/1-screenshot.png"_ba));
    QCOMPARE(served.body, picture);
    QCOMPARE(served.header("Content-Type"_ba), "image/png"_ba);
    QCOMPARE(served.header("X-Content-Type-Options"_ba), "nosniff"_ba);
    const Reply inbox = ask(request("GET"_ba, "/"_ba));
    QVERIFY(inbox.body.contains("It &lt;b&gt;breaks"));
    QVERIFY(inbox.body.contains(base + "/1-screenshot.png"_ba));

    QDirIterator files(m_folder->path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(!file.readAll().contains("first-token"), qPrintable(file.fileName()));
    }
}

void TestSandbox::judgesThePutToTheLetter_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("named");
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &after, int status,
                        const char *named) {
        QTest::newRow(name) << before << after << status << QByteArray(named);
    };
    row("as given out", {}, {}, 200, "");
    row("escape decoded", "%2F"_ba, "/"_ba, 403, "signature");
    row("escape in lower case", "%2B"_ba, "%2b"_ba, 403, "signature");
    row("one parameter more", " HTTP/1.1"_ba, "&x=1 HTTP/1.1"_ba, 403, "signature");
    row("no required header", "x-zenvor-upload"_ba, "x-other"_ba, 403, "x-zenvor-upload");
    row("two content types", "x-zenvor-upload"_ba, "content-type: image/png\r\nx-zenvor-upload"_ba, 403,
        "Content-Type");
    row("authorization", "x-zenvor-upload"_ba, "Authorization: x\r\nx-zenvor-upload"_ba, 400,
        "Authorization");
    row("fewer bytes", "Content-Length: 8"_ba, "Content-Length: 7"_ba, 400, "Content-Length");
    row("chunked", "Content-Length: 8\r\n\r\n"_ba, "Transfer-Encoding: chunked\r\n\r\n8\r\n"_ba, 411,
        "Content-Length");
    row("unknown upload", "/storage/"_ba, "/storage/0"_ba, 404, "no upload");
    row("posted", "PUT "_ba, "POST "_ba, 405, "PUT");
}

void TestSandbox::judgesThePutToTheLetter()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(int, status);
    QFETCH(QByteArray, named);
    QByteArray bytes = put(reserve(8), pngBytes);
    if (!before.isEmpty()) {
        QVERIFY(bytes.contains(before));
        bytes.replace(before, after);
    }
    if (status == 411)
        bytes += "\r\n0\r\n\r\n"_ba;
    const Reply reply = ask(bytes);
    QCOMPARE(reply.status, status);
    QVERIFY2(reply.body.contains(named), reply.body.constData());
}

void TestSandbox::completesOnlyWhatArrivedUnderItsEtag()
{
    misbehave(R"({"path": "/storage/", "skip": 1, "headers": {"ETag": null}})"_ba);
    const QJsonObject first = reserve(8);
    const auto complete = [&](const QJsonObject &init, const QJsonObject &more) {
        return ask(post(completePath,
                        with(caller(), with({{u"upload_id"_s, init.value("upload_id"_L1)}}, more))))
            .status;
    };
    QCOMPARE(complete(first, {{u"etag"_s, u"\"x\""_s}}), 409);
    const QString etag = QString::fromLatin1(ask(put(first, pngBytes)).header("ETag"_ba));
    QCOMPARE(complete(first, {{u"etag"_s, etag.mid(1, etag.size() - 2)}}), 422);
    QCOMPARE(complete(first, {}), 422);
    QCOMPARE(complete(first, {{u"etag"_s, etag}, {u"token"_s, u"other-token"_s}}), 422);
    QCOMPARE(complete(first, {{u"etag"_s, etag}}), 200);

    const QJsonObject second = reserve(8);
    const Reply withoutEtag = ask(put(second, pngBytes));
    QCOMPARE(withoutEtag.status, 200);
    QCOMPARE(withoutEtag.header("ETag"_ba), QByteArray());
    QCOMPARE(complete(second, {{u"etag"_s, etag}}), 422);
    QCOMPARE(complete(second, {}), 200);
}

void TestSandbox::takesOnlyCompletedUploadsOfTheSameToken()
{
    const QJsonObject init = reserve(8);
    ask(put(init, pngBytes));
    const auto report = [](const QString &id, const QString &token) {
        return post(reportPath,
                    with(goodReport(), {{u"attachment_upload_ids"_s, QJsonArray{id}}, {u"token"_s, token}}));
    };
    QVERIFY(ask(report(init.value("upload_id"_L1).toString(), u"first-token"_s))
                .body.contains("was not completed"));
    const QString id = uploadWhole(pngBytes);
    QVERIFY(ask(report(id, u"other-token"_s)).body.contains("another token"));
    QCOMPARE(ask(report(id, u"first-token"_s)).status, 200);
    QCOMPARE(ask(report(id, u"first-token"_s)).status, 422); // one upload, one report
}

void TestSandbox::keepsUploadsAndReportsOverARestart()
{
    QCOMPARE(ask(post(reportPath, with(goodReport(), {{u"message"_s, u"older"_s}}))).status, 200);
    const QString id = uploadWhole(pngBytes);
    QVERIFY(!id.isEmpty());
    m_sandbox.reset();
    for (const auto &name : {u"/reports/broken/report.json"_s, u"/uploads/broken.json"_s}) {
        const QString path = m_folder->path() + name;
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("{") == 1);
    }

    m_sandbox = startSandbox();
    QCOMPARE(m_sandbox->reports().size(), 1);
    const QJsonObject report = with(goodReport(), {{u"attachment_upload_ids"_s, QJsonArray{id}}});
    QCOMPARE(ask(post(reportPath, report)).status, 200);
    m_sandbox = startSandbox();
    QCOMPARE(m_sandbox->reports().size(), 2);
    QCOMPARE(m_sandbox->reports().newest().attachments.value(0).bytes, 8);
    QCOMPARE(m_sandbox->reports().all().last().body.value("message"_L1).toString(), u"older"_s);
}

void TestSandbox::listensAgainOnTheSamePort()
{
    RawClient client(m_sandbox->url());
    QCOMPARE(client.exchange(post(pingPath, goodPing())).status, 200);
    const QUrl url = m_sandbox->url();
    m_sandbox->close();
    QTRY_VERIFY(client.hasEnded());
    RawClient refused(url);
    QTRY_COMPARE(refused.socket->error(), QAbstractSocket::ConnectionRefusedError);
    QString error;
    QVERIFY2(m_sandbox->listen(&error), qPrintable(error));
    QCOMPARE(m_sandbox->url(), url);
    QCOMPARE(ask(post(pingPath, goodPing())).status, 200);

    connect(m_sandbox.get(), &Sandbox::requestAnswered, m_sandbox.get(), &Sandbox::close);
    RawClient unlucky(url);
    unlucky.send(post(pingPath, goodPing()));
    QTRY_VERIFY(unlucky.hasEnded());
    QCOMPARE(unlucky.socket->readAll(), QByteArray());
}

void TestSandbox::readsARequestHoweverItIsSent_data()
{
    QTest::addColumn<QList<QByteArray>>("pieces");
    QTest::addColumn<QList<int>>("statuses");
    QTest::addColumn<bool>("ends");
    const QByteArray ping = post(pingPath, goodPing());
    const QByteArray json = QJsonDocument(goodPing()).toJson();
    const QByteArray chunks = "5\r\n"_ba + json.left(5) + "\r\n"_ba
        + QByteArray::number(json.size() - 5, 16).toUpper() + ";a=b\r\n"_ba + json.mid(5)
        + "\r\n0\r\nTrailer: x\r\n\r\n"_ba;
    const auto head = [](const QByteArray &more, const QByteArray &version = "1.1"_ba) {
        return "POST "_ba + pingPath + " HTTP/"_ba + version
            + "\r\nHost: localhost:80\r\nContent-Type: application/json\r\n"_ba + more + "\r\n\r\n"_ba;
    };
    const auto row = [](const char *name, const QList<QByteArray> &pieces, const QList<int> &statuses,
                        bool ends) {
        QTest::newRow(name) << pieces << statuses << ends;
    };
    QList<QByteArray> bytes;
    for (const char byte : ping)
        bytes << QByteArray(1, byte);
    const QByteArray length = "Content-Length: "_ba + QByteArray::number(json.size());
    row("byte by byte", bytes, {200}, false);
    row("three at once", {ping + "\r\n"_ba + ping + ping}, {200, 200, 200}, false);
    row("in chunks", {head("Transfer-Encoding: chunked"_ba), chunks, ping}, {200, 200}, false);
    row("after asking first", {head("Expect: 100-continue\r\n"_ba + length), json}, {100, 200}, false);
    row("HTTP/1.0", {head(length, "1.0"_ba) + json}, {200}, true);
    row("asking to close", {head("Connection: close\r\n"_ba + length) + json}, {200}, true);
    row("two lengths", {head(length + "\r\n"_ba + length) + json}, {400}, true);
    row("length and chunks", {head(length + "\r\nTransfer-Encoding: chunked"_ba) + json}, {400}, true);
    row("bad chunk size", {head("Transfer-Encoding: chunked"_ba) + "0x5\r\n"_ba}, {400}, true);
    row("huge head", {"GET / HTTP/1.1\r\nHost: localhost\r\nX: "_ba + QByteArray(70000, 'x')}, {431}, true);
    row("huge body announced", {head("Content-Length: 5000000"_ba)}, {413}, true);
    row("huge body refused when asked", {head("Expect: 100-continue\r\nContent-Length: 5000000"_ba)}, {413},
        true);
    row("no HTTP", {"hello\r\n\r\n"_ba}, {400}, true);
}

void TestSandbox::readsARequestHoweverItIsSent()
{
    QFETCH(QList<QByteArray>, pieces);
    QFETCH(QList<int>, statuses);
    QFETCH(bool, ends);
    RawClient client(m_sandbox->url());
    QTRY_COMPARE(client.socket->state(), QAbstractSocket::ConnectedState);
    for (const QByteArray &piece : pieces) {
        client.send(piece);
        QTRY_COMPARE(client.socket->bytesToWrite(), 0);
        QCoreApplication::processEvents();
    }
    QList<int> answered;
    for (qsizetype i = 0; i < statuses.size(); ++i)
        answered << client.receive().status;
    QCOMPARE(answered, statuses);
    if (ends)
        QTRY_VERIFY(client.hasEnded());
    else
        QCOMPARE(client.exchange(post(pingPath, goodPing())).status, 200);
}

void TestSandbox::takesLargeUploadsAtTheSameTime()
{
    const QByteArray video(60'000'000, 'v');
    const QByteArray etag = '"' + QCryptographicHash::hash(video, QCryptographicHash::Md5).toHex() + '"';
    const QList<QJsonObject> inits = {reserve(video.size()), reserve(video.size()), reserve(video.size())};
    std::vector<std::unique_ptr<RawClient>> clients;
    for (const QJsonObject &init : inits) {
        clients.push_back(std::make_unique<RawClient>(m_sandbox->url()));
        clients.back()->send(put(init, video));
    }
    QCOMPARE(ask(post(pingPath, goodPing())).status, 200); // nobody has to wait for the bytes
    for (const auto &client : clients)
        QCOMPARE(client->receive(60000).header("ETag"_ba), etag);
}

void TestSandbox::leavesNothingOfAnUploadThatBrokeOff()
{
    const QDir uploads(m_folder->filePath(u"uploads"_s));
    const QByteArray whole = put(reserve(100000), QByteArray(100000, 'v'));
    RawClient client(m_sandbox->url());
    client.send(whole.left(50000));
    QTRY_COMPARE(uploads.entryList({u"*.part"_s}).size(), 1);
    client.socket->disconnectFromHost();
    QTRY_COMPARE(uploads.entryList({u"*.part"_s}).size(), 0);
    QCOMPARE(m_sandbox->requests().last().status, 0);
    QVERIFY(m_sandbox->requests().last().deviations.value(0).contains("client left"_L1));
    QCOMPARE(ask(whole).status, 200); // the reservation still holds
}

void TestSandbox::breaksAnAnswerOff_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("place");
    QTest::addColumn<QString>("state");
    for (const auto &[kind, state] :
         {std::pair("stall", u"open"_s), std::pair("cut", u"ended"_s), std::pair("reset", u"reset"_s)}) {
        for (const char *place : {"beforeHeaders", "inHeaders", "inBody"})
            QTest::addRow("%s %s", kind, place) << QByteArray(kind) << QByteArray(place) << state;
    }
}

void TestSandbox::breaksAnAnswerOff()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, place);
    QFETCH(QString, state);
    misbehave("{\""_ba + kind + "\": \""_ba + place + "\", \"body\": \"0123456789\"}"_ba);
    SystemClient client(m_sandbox->url());
    QTRY_COMPARE(client.send(post(pingPath, goodPing())), post(pingPath, goodPing()).size());
    QTRY_COMPARE(m_sandbox->requests().size(), 1);
    QTRY_COMPARE(client.state(), state);
    QTRY_VERIFY(place == "beforeHeaders"_ba || (client.state(), !client.received.isEmpty()));
    const QByteArray sofar = client.received;
    const auto goesOn = [&] {
        return client.state() != state || client.received != sofar;
    };
    if (kind == "stall"_ba)
        QVERIFY(!QTest::qWaitFor(goesOn, 150));
    QCOMPARE(sofar.isEmpty(), place == "beforeHeaders"_ba);
    QCOMPARE(sofar.contains("\r\n\r\n"), place == "inBody"_ba);
    QCOMPARE(sofar.endsWith("01234"), place == "inBody"_ba);
}

void TestSandbox::playsFaultyAnswers_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArray>("form"); // a regular expression for all bytes until the end
    const auto row = [](const QByteArray &fault, const QByteArray &form) {
        QTest::newRow(fault.constData()) << fault << form;
    };
    row(R"({"status": 503, "headers": {"Retry-After": "2"}, "body": "later"})"_ba,
        "\\AHTTP/1.1 503 .*Retry-After: 2\r\n.*\r\n\r\nlater\\z"_ba);
    row(R"({"redirect": "http://127.0.0.1:1/x"})"_ba,
        "\\AHTTP/1.1 307 .*Location: http://127.0.0.1:1/x\r\n"_ba);
    row(R"({"redirect": "/x", "status": 302})"_ba, "\\AHTTP/1.1 302 .*Location: /x\r\n"_ba);
    row(R"({"informational": [102, 103]})"_ba,
        "\\AHTTP/1.1 102 .*\r\n\r\nHTTP/1.1 103 .*\r\n\r\nHTTP/1.1 200 .*\"ok\":true"_ba);
    row(R"({"garbage": "SSH-2.0"})"_ba, "\\ASSH-2.0\\z"_ba);
    row(R"({"chunked": true, "body": "12345"})"_ba,
        "Transfer-Encoding: chunked\r\n.*\r\n\r\n5\r\n12345\r\n0\r\n\r\n\\z"_ba);
    row(R"({"badChunk": true, "body": "12345"})"_ba, "\r\n\r\n5\r\n12345\r\nno size\r\n\\z"_ba);
    row(R"({"contentLength": 99, "body": "12345"})"_ba, "Content-Length: 99\r\n.*\r\n\r\n12345\\z"_ba);
    row(R"({"contentLength": 2, "body": "12345"})"_ba, "Content-Length: 2\r\n.*\r\n\r\n12345\\z"_ba);
    row(R"({"bodyBase64": "AAH/", "status": 500})"_ba,
        "Content-Length: 3\r\n.*\r\n\r\n\\x{00}\\x{01}\\x{ff}\\z"_ba);
    row(R"({"bodySize": 3000000})"_ba, "Content-Length: 3000000\r\n.*\r\n\r\nxxxxx"_ba);
    // The last four bytes of gzip are the size of what it holds.
    row(R"({"gzip": true, "bodySize": 50000000, "contentLength": 60000000})"_ba,
        "Content-Encoding: gzip\r\n.*\r\n\r\n\\x{1f}\\x{8b}.*\\x{80}\\x{f0}\\x{fa}\\x{02}\\z"_ba);
}

void TestSandbox::playsFaultyAnswers()
{
    QFETCH(QByteArray, fault);
    QFETCH(QByteArray, form);
    misbehave(fault);
    RawClient client(m_sandbox->url());
    QByteArray bytes = post(pingPath, goodPing());
    client.send(bytes.replace("Host:"_ba, "Connection: close\r\nHost:"_ba));
    QByteArray received;
    QTRY_VERIFY_WITH_TIMEOUT((received += client.socket->readAll(), client.hasEnded()), 20000);
    received += client.socket->readAll();
    const QRegularExpression expression(QString::fromLatin1(form),
                                        QRegularExpression::DotMatchesEverythingOption);
    QVERIFY2(expression.match(QString::fromLatin1(received)).hasMatch(), received.left(500).constData());
}

void TestSandbox::takesItsTime_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("least");
    QTest::newRow("delay") << R"({"delayMs": 150})"_ba << 150;
    QTest::newRow("drip") << R"({"dripMs": 10, "body": "0123456789012345"})"_ba << 150;
    QTest::newRow("drip of the head too") << R"({"dripMs": 4, "dripHeaders": true, "body": ""})"_ba << 150;
}

void TestSandbox::takesItsTime()
{
    QFETCH(QByteArray, fault);
    QFETCH(int, least);
    misbehave(fault);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ask(post(pingPath, goodPing())).status, 200);
    QVERIFY2(timer.elapsed() >= least, qPrintable(QString::number(timer.elapsed())));
}

void TestSandbox::neverBuffersAnEndlessAnswer()
{
    const auto residentBytes = [] {
        QFile file(u"/proc/self/statm"_s);
        return file.open(QIODevice::ReadOnly)
            ? file.readAll().split(' ').value(1).toLongLong() * ::getpagesize()
            : 0;
    };
    misbehave(R"({"endless": true})"_ba);
    RawClient client(m_sandbox->url());
    client.socket->setReadBufferSize(64 * 1024);
    client.send(post(pingPath, goodPing()));
    QTRY_COMPARE(client.socket->bytesAvailable(), 64 * 1024);
    const qint64 before = residentBytes();
    // The client stops reading; a service that does not care would go on filling memory meanwhile.
    const auto grows = [&] {
        for (int turn = 0; turn < 50; ++turn)
            QCoreApplication::processEvents();
        return residentBytes() - before > 16'000'000;
    };
    QVERIFY(!QTest::qWaitFor(grows, 300));
    qint64 read = 0;
    connect(client.socket.get(), &QTcpSocket::readyRead, this,
            [&] { read += client.socket->readAll().size(); });
    read += client.socket->readAll().size();
    QTRY_VERIFY(read > 30'000'000);
    QVERIFY(!client.hasEnded());
}

void TestSandbox::answersBeforeTheBodyOrLeavesItUnread()
{
    misbehave(R"({"when": "head", "status": 503, "body": "early"})"_ba);
    RawClient early(m_sandbox->url());
    const QByteArray whole = post(pingPath, goodPing());
    const qsizetype bodyAt = whole.indexOf("\r\n\r\n") + 4;
    QCOMPARE(early.exchange(whole.left(bodyAt)).body, "early"_ba);
    QCOMPARE(early.exchange(whole.mid(bodyAt) + whole).status, 200);

    QByteArray rest = put(reserve(60'000'000), QByteArray(60'000'000, 'v'));
    misbehave(R"({"path": "/storage/", "stopReading": true})"_ba);
    SystemClient unread(m_sandbox->url());
    const auto sendMore = [&] {
        for (int turn = 0; turn < 50; ++turn) {
            rest.remove(0, qMax<qint64>(0, unread.send(rest)));
            QCoreApplication::processEvents();
        }
        return rest.isEmpty();
    };
    QVERIFY(!QTest::qWaitFor(sendMore, 300));
    QVERIFY(rest.size() > 10'000'000);
    QCOMPARE(unread.state(), u"open"_s);
    QCOMPARE(unread.received, QByteArray());
}

void TestSandbox::storesTheReportBeforeItMisbehaves()
{
    misbehave(R"([{"handle": true, "cut": "beforeHeaders"}, {"status": 500}])"_ba);
    RawClient client(m_sandbox->url());
    client.send(post(reportPath, goodReport()));
    QTRY_VERIFY(client.hasEnded());
    QCOMPARE(m_sandbox->reports().size(), 1);
    QCOMPARE(ask(post(reportPath, goodReport())).status, 500);
    QCOMPARE(m_sandbox->reports().size(), 1);
}

void TestSandbox::countsSkippedAndPlayedFaults()
{
    misbehave(R"([{"path": "/v1/sdk/devices", "skip": 2, "times": 2, "status": 501},
                  {"path": "/v1/sdk/devices", "status": 502}, {"method": "PUT", "times": 0, "status": 504}])"_ba);
    QList<int> statuses;
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(ask(post("/v1/sdk/validate"_ba, caller())).status, 200);
        statuses << ask(post(pingPath, goodPing())).status;
    }
    QCOMPARE(statuses, QList<int>({502, 200, 501, 501, 200}));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(ask(request("PUT"_ba, "/storage/x"_ba)).status, 504);
    m_sandbox->clearFaults();
    QCOMPARE(ask(request("PUT"_ba, "/storage/x"_ba)).status, 404);
}

void TestSandbox::refusesWhatIsNoFault_data()
{
    QTest::addColumn<QString>("named");
    QTest::newRow(R"({"satus": 500})") << u"satus is not a known key"_s;
    QTest::newRow(R"({"status": "500"})") << u"status must be an integer"_s;
    QTest::newRow(R"({"status": 99})") << u"status must be from"_s;
    QTest::newRow(R"({"cut": "inTheMiddle"})") << u"cut must be one of beforeHeaders"_s;
    QTest::newRow(R"({"cut": "inBody", "stall": "inBody"})") << u"exclude each other"_s;
    QTest::newRow(R"({"handle": true, "when": "head"})") << u"handle needs"_s;
    QTest::newRow(R"({"headers": {"A": "b\r\nC: d"}})") << u"headers must hold"_s;
    QTest::newRow(R"({"path": "v1"})") << u"path must begin"_s;
    QTest::newRow(R"([{"status": 500}, 7])") << u"an object is expected"_s;
    QTest::newRow(R"({"status":)") << u"Not JSON"_s;
}

void TestSandbox::refusesWhatIsNoFault()
{
    QFETCH(QString, named);
    QString error;
    QVERIFY(!m_sandbox->addFault(QByteArray(QTest::currentDataTag()), &error));
    QVERIFY2(error.contains(named), qPrintable(error));
    QCOMPARE(ask(post(pingPath, goodPing())).status, 200);
}

void TestSandbox::isControlledOverHttp()
{
    const QByteArray fault = R"({"path": "/v1/sdk/devices", "status": 429})"_ba;
    QCOMPARE(ask(request("POST"_ba, "/sandbox/faults"_ba, fault, "Content-Type: text/plain\r\n"_ba)).status,
             415);
    QVERIFY(
        ask(request("POST"_ba, "/sandbox/faults"_ba, "{\"x\":1}"_ba)).body.contains("x is not a known key"));
    QCOMPARE(ask(request("POST"_ba, "/sandbox/faults"_ba, '[' + fault + ',' + fault + ']')).status, 200);
    QCOMPARE(ask(post(pingPath, goodPing())).status, 429);
    const Reply waiting = ask(request("GET"_ba, "/sandbox/faults"_ba));
    QCOMPARE(QJsonDocument::fromJson(waiting.body).array().size(), 1);
    QCOMPARE(ask(request("DELETE"_ba, "/sandbox/faults"_ba)).body, "[]"_ba);
    QCOMPARE(ask(post(pingPath, goodPing())).status, 200);

    const Reply listed = ask(request("GET"_ba, "/sandbox/requests"_ba));
    QCOMPARE(QJsonDocument::fromJson(listed.body).array().size(), 2);
    QVERIFY(!listed.body.contains("first-token"));

    RawClient head(m_sandbox->url());
    head.send("HEAD / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n"_ba);
    QTRY_VERIFY(head.hasEnded());
    const QByteArray headBytes = head.socket->readAll();
    QVERIFY(headBytes.startsWith("HTTP/1.1 200 ") && headBytes.endsWith("\r\n\r\n"));
}

void TestSandbox::servesNothingOutsideAReport_data()
{
    QTest::addColumn<QByteArray>("rest");
    for (const char *rest :
         {"/meta.json", "/../../secret", "/%2e%2e/%2e%2e/secret", "/..%2f..%2fsecret", "//secret", "/", ""})
        QTest::newRow(rest) << QByteArray(rest);
}

void TestSandbox::servesNothingOutsideAReport()
{
    QFETCH(QByteArray, rest);
    QFile secret(m_folder->filePath(u"secret"_s));
    QVERIFY(secret.open(QIODevice::WriteOnly));
    QCOMPARE(ask(post(reportPath, goodReport())).status, 200);
    const QByteArray base = "/sandbox/reports/"_ba + m_sandbox->reports().newest().id.toLatin1();
    QCOMPARE(ask(request("GET"_ba, base + "/report.json"_ba)).status, 200);
    QCOMPARE(ask(request("GET"_ba, base + rest)).status, 404);
}

void TestSandbox::answersOnlyToLoopbackNames_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("localhost") << 200;
    QTest::newRow("LOCALHOST:1") << 200;
    QTest::newRow("[::1]:8080") << 200;
    QTest::newRow("evil.example") << 403;
    QTest::newRow("127.0.0.1.evil.example") << 403;
    QTest::newRow("localhost#.evil.example") << 403;
    QTest::newRow("evil.example\r\nHost: localhost") << 400;
}

void TestSandbox::answersOnlyToLoopbackNames()
{
    QFETCH(int, status);
    for (const char *target : {"/", "/sandbox/reports"}) {
        const QByteArray line = "GET "_ba + target + " HTTP/1.1\r\nHost: "_ba;
        QCOMPARE(ask(line + QTest::currentDataTag() + "\r\n\r\n"_ba).status, status);
    }
}

void TestSandbox::speaksTls()
{
    const QString key = m_folder->filePath(u"key.pem"_s);
    const QString certificate = m_folder->filePath(u"cert.pem"_s);
    QProcess openssl;
    openssl.start(u"openssl"_s,
                  {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s, u"ec_paramgen_curve:P-256"_s,
                   u"-nodes"_s, u"-subj"_s, u"/CN=localhost"_s, u"-days"_s, u"2"_s, u"-keyout"_s, key,
                   u"-out"_s, certificate});
    QVERIFY2(openssl.waitForFinished() && openssl.exitCode() == 0, "the program openssl is needed");
    m_sandbox = startSandbox(certificate, key);
    QVERIFY(m_sandbox->url().toString().startsWith("https://127.0.0.1:"_L1));

    RawClient client(m_sandbox->url(), std::make_unique<QSslSocket>());
    const QByteArray video = QByteArray(40'000'000, 'v');
    const QJsonObject init = client.exchange(post(initPath, goodInit(video.size()))).json();
    client.send(put(init, video));
    const Reply stored = client.receive(60000);
    QCOMPARE(stored.header("ETag"_ba),
             '"' + QCryptographicHash::hash(video, QCryptographicHash::Md5).toHex() + '"');
    misbehave(R"({"bodySize": 20000000, "status": 500})"_ba);
    client.send(post(pingPath, goodPing()));
    QCOMPARE(client.receive(60000).body.size(), 20'000'000);
    misbehave(R"({"cut": "inBody", "bodySize": 1000})"_ba);
    client.send(post(pingPath, goodPing()));
    QTRY_VERIFY((client.received += client.socket->readAll(), client.hasEnded()));
    QVERIFY(client.received.endsWith("\r\n\r\n"_ba + QByteArray(500, 'x')));
}

QTEST_GUILESS_MAIN(TestSandbox)
#include "tst_sandbox.moc"
