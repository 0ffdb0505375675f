#include "support/certificate.h"
#include "support/raw_client.h"
#include "support/test_service.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <vector>

using namespace zenvor::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using zenvor::sandbox::Sandbox;

namespace {

const QByteArray pngBytes = "\x89PNG\r\n\x1a\n"_ba;

QByteArray etagOf(const QByteArray &bytes)
{
    return '"' + QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex() + '"';
}

QJsonObject reportWith(const QString &uploadId, const QString &token = TestService::token())
{
    return with(goodReport(), {{u"attachment_upload_ids"_s, QJsonArray{uploadId}}, {u"token"_s, token}});
}

} // namespace

/// What the sandbox takes, refuses, keeps and shows.
class TestSandbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesEachDeviationOfABody_data();
    void namesEachDeviationOfABody();
    void tellsWhatIsNoRequestOfAnApp();
    void servesAReportWithItsUpload();
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
    void isControlledOverHttp();
    void servesNothingOutsideAReport();
    void answersOnlyToLoopbackNames();
    void speaksTls();
    void endsAConnectionAsAFaultSays_data();
    void endsAConnectionAsAFaultSays();
    void neverBuffersAnEndlessAnswer();
    void playsTheFirstFaultThatIsDue();
    void refusesWhatIsNoFault_data();
    void refusesWhatIsNoFault();

private:
    void start();
    Reply answer(const QByteArray &bytes) const { return ask(m_sandbox->url(), bytes); }
    QJsonObject reserve(qint64 bytes) const { return answer(post(initPath, goodInit(bytes))).json(); }
    int complete(const QJsonObject &init, const QJsonObject &more) const;
    QString uploadWhole(const QByteArray &bytes) const;
    bool plays(const QByteArray &faults, QString *error = nullptr);
    int pingStatus() const { return answer(post(pingPath, goodPing())).status; }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Sandbox> m_sandbox;
};

void TestSandbox::start()
{
    m_sandbox.reset(); // before another one uses the folder
    zenvor::sandbox::SandboxOptions options;
    options.bundleIdsByToken = {{TestService::token(), TestService::bundleId()},
                                {u"other-token"_s, TestService::bundleId()}};
    options.folder = m_folder->path();
    m_sandbox = std::make_unique<Sandbox>(options);
    QString error;
    QVERIFY2(m_sandbox->listen(&error), qPrintable(error));
}

void TestSandbox::init()
{
    m_sandbox.reset();
    m_folder = std::make_unique<QTemporaryDir>();
    start();
}

int TestSandbox::complete(const QJsonObject &init, const QJsonObject &more) const
{
    const QJsonObject body = with(caller(), {{u"upload_id"_s, init.value("upload_id"_L1)}});
    return answer(post(completePath, with(body, more))).status;
}

QString TestSandbox::uploadWhole(const QByteArray &bytes) const
{
    const QJsonObject init = reserve(bytes.size());
    const Reply stored = answer(put(init, bytes));
    const int status = complete(init, {{u"etag"_s, QString::fromLatin1(stored.header("ETag"_ba))}});
    return status == 200 ? init.value("upload_id"_L1).toString() : QString();
}

bool TestSandbox::plays(const QByteArray &faults, QString *error)
{
    QString ignored;
    return m_sandbox->addFault(faults, error ? error : &ignored);
}

void TestSandbox::namesEachDeviationOfABody_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("key"); // "device.model": a key of an object in the body
    QTest::addColumn<QByteArray>("value"); // JSON; empty: the key is taken out
    QTest::addColumn<QByteArray>("named");

    const auto row = [](const char *path, const char *key, const char *value, const char *named) {
        QTest::addRow("%s %s: %s", path, key, value)
            << QByteArray(path) << QString::fromLatin1(key) << QByteArray(value) << QByteArray(named);
    };
    row(pingPath, "device_id", "", "device_id is missing");
    row(pingPath, "platform", "\"linux\"", "platform must be");
    row(pingPath, "os", "\"x\"", "os is not a known key");
    row(initPath, "bytes", "0", "bytes must be more");
    row(initPath, "kind", "\"photo\"", "kind must be one of");
    row(initPath, "mime_type", "\"Image/png\"", "mime_type must be one of");
    row(initPath, "mime_type", "\"video/mp4\"", "does not go with");
    row(completePath, "upload_id", "\"00ff\"", "never issued");
    row(reportPath, "category", "\"improvement\"", "category must be one of");
    row(reportPath, "category", "\"feedback\"", "occurrence_frequency goes only with");
    row(reportPath, "occurrence_frequency", "\"often\"", "occurrence_frequency must be one of");
    row(reportPath, "message", "\"\"", "message is empty");
    row(reportPath, "message", "\"text\\n\"", "message is not trimmed");
    row(reportPath, "allow_contact", "false", "email must be left out");
    row(reportPath, "allow_contact", "1", "allow_contact must be true or false");
    row(reportPath, "occurred_at", "\"2026-02-30T23:35:30Z\"", "occurred_at must be");
    row(reportPath, "device.model", "", "device.model is missing");
    row(reportPath, "device.interface_style", "\"blue\"", "device.interface_style must be");
    row(reportPath, "device.identifier_for_vendor", "null", "identifier_for_vendor is null");
    row(reportPath, "attachment_upload_ids", "[]", "attachment_upload_ids is empty");
    row(reportPath, "attachment_upload_ids", R"(["a","b","c","d","e","f"])", "more than 5 ids");
    row(reportPath, "attachment_upload_ids", R"(["a","a"])", "names an upload twice");
    row(reportPath, "screenshot_upload_id", "\"a\"", "screenshot_upload_id is not among");
}

void TestSandbox::namesEachDeviationOfABody()
{
    QFETCH(QByteArray, path);
    QFETCH(QString, key);
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, named);
    QString lines;
    connect(m_sandbox.get(), &Sandbox::logged, this, [&](const QString &line) { lines += line + u'\n'; });

    const QHash<QByteArray, QJsonObject> good{{pingPath, goodPing()},
                                              {initPath, goodInit(8)},
                                              {completePath, caller()},
                                              {reportPath, goodReport()}};
    const QJsonValue changed = QJsonDocument::fromJson('[' + value + ']').array().at(0);
    const QString outer = key.section(u'.', 0, 0);
    QJsonObject body = good.value(path);
    QJsonObject inner = body.value(outer).toObject();
    inner.insert(key.section(u'.', 1), changed);
    body.insert(outer, key == outer ? changed : inner); // an undefined value takes the key out

    const Reply reply = answer(post(path, body));
    QCOMPARE(reply.status, 422);
    const QJsonValue message = reply.json().value("message"_L1);
    QVERIFY(message.isString() || message.toArray().size() > 1);
    QVERIFY2(reply.body.contains(named), reply.body.constData());
    QVERIFY2(lines.contains(QString::fromLatin1(named)), qPrintable(lines));
    QVERIFY(m_sandbox->reports().isEmpty());
}

void TestSandbox::tellsWhatIsNoRequestOfAnApp()
{
    const auto status = [this](const QByteArray &body, const QByteArray &type) {
        return answer(request("POST"_ba, pingPath, body, "content-type: "_ba + type + "\r\n"_ba)).status;
    };
    const QByteArray good = QJsonDocument(goodPing()).toJson();
    QCOMPARE(status(good, "application/json; charset=utf-8"_ba), 200);
    QCOMPARE(status(good, "text/plain"_ba), 422);
    QCOMPARE(status("{\"token\":"_ba, "application/json"_ba), 400);
    QCOMPARE(status("[1]"_ba, "application/json"_ba), 422);
    QCOMPARE(answer(request("GET"_ba, pingPath)).header("Allow"_ba), "POST"_ba);
    QVERIFY(answer(post("/v1/sdk/other"_ba, {})).json().contains("error"_L1));

    QCOMPARE(answer(post(validatePath, caller(R"({"token": "nobody"})"))).status, 401);
    QCOMPARE(answer(post(reportPath, with(goodReport(), {{u"token"_s, u"nobody"_s}}))).status, 401);
    QCOMPARE(answer(post(pingPath, with(goodPing(), {{u"bundle_id"_s, u"com.example.other"_s}}))).status,
             403);
}

void TestSandbox::servesAReportWithItsUpload()
{
    QSignalSpy received(m_sandbox.get(), &Sandbox::reportReceived);
    const QByteArray picture = pngBytes + QByteArray(300000, 'p');
    const QString id = uploadWhole(picture);
    const QJsonObject report = with(reportWith(id), {{u"screenshot_upload_id"_s, id}});
    QCOMPARE(answer(post(reportPath, report)).status, 200);
    QCOMPARE(received.size(), 1);
    const QByteArray path =
        "/sandbox/reports/"_ba + m_sandbox->reports().newest().id.toLatin1() + "/1-screenshot.png"_ba;
    const Reply served = answer(request("GET"_ba, path));
    QCOMPARE(served.body, picture);
    QCOMPARE(served.header("Content-Type"_ba), "image/png"_ba);
    QCOMPARE(served.header("X-Content-Type-Options"_ba), "nosniff"_ba);
    const Reply inbox = answer(request("GET"_ba, "/"_ba));
    QVERIFY(inbox.body.contains("It &lt;b&gt;breaks") && inbox.body.contains(path));

    QDirIterator files(m_folder->path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(!file.readAll().contains(TestService::token().toLatin1()), qPrintable(file.fileName()));
    }
}

void TestSandbox::judgesThePutToTheLetter_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("named");
    const auto own = "x-zenvor-upload"_ba; // the header that only an upload has
    const auto length = "Content-Length"_ba;
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &after, int status,
                        const QByteArray &named) {
        QTest::newRow(name) << before << after << status << named;
    };
    row("escape decoded", "%2F", "/", 403, "signature");
    row("escape in lower case", "%2B", "%2b", 403, "signature");
    row("one parameter more", " HTTP/", "&x=1 HTTP/", 403, "signature");
    row("no required header", own, "x-other", 403, own);
    row("two types", own, "content-type: image/png\r\n" + own, 403, "Content-Type");
    row("authorization", own, "Authorization: x\r\n" + own, 400, "Authorization");
    row("fewer bytes", "Length: 8", "Length: 7", 400, length);
    row("no length", length, "X-Length", 411, length);
    row("unknown upload", "/storage/", "/storage/0", 404, "no upload");
    row("posted", "PUT ", "POST ", 405, "PUT");
}

void TestSandbox::judgesThePutToTheLetter()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(int, status);
    QFETCH(QByteArray, named);
    QByteArray bytes = put(reserve(8), pngBytes);
    QVERIFY(bytes.contains(before));
    bytes.replace(before, after);
    const Reply reply = answer(bytes);
    QCOMPARE(reply.status, status);
    QVERIFY2(reply.body.contains(named), reply.body.constData());
}

void TestSandbox::completesOnlyWhatArrivedUnderItsEtag()
{
    const QJsonObject first = reserve(8);
    QCOMPARE(complete(first, {{u"etag"_s, u"\"x\""_s}}), 409);
    const QString etag = QString::fromLatin1(answer(put(first, pngBytes)).header("ETag"_ba));
    QCOMPARE(complete(first, {{u"etag"_s, etag.mid(1, etag.size() - 2)}}), 422);
    QCOMPARE(complete(first, {}), 422);
    QCOMPARE(complete(first, {{u"etag"_s, etag}, {u"token"_s, u"other-token"_s}}), 422);
    QCOMPARE(complete(first, {{u"etag"_s, etag}}), 200);

    QVERIFY(plays(R"({"path": "/storage/", "headers": {"ETag": null}})"_ba));
    const QJsonObject second = reserve(8);
    const Reply withoutEtag = answer(put(second, pngBytes));
    QCOMPARE(withoutEtag.status, 200);
    QCOMPARE(withoutEtag.header("ETag"_ba), QByteArray());
    QCOMPARE(complete(second, {{u"etag"_s, etag}}), 422);
    QCOMPARE(complete(second, {}), 200);
}

void TestSandbox::takesOnlyCompletedUploadsOfTheSameToken()
{
    const QJsonObject init = reserve(8);
    answer(put(init, pngBytes));
    const QJsonObject early = reportWith(init.value("upload_id"_L1).toString());
    QVERIFY(answer(post(reportPath, early)).body.contains("was not completed"));
    const QString id = uploadWhole(pngBytes);
    QVERIFY(answer(post(reportPath, reportWith(id, u"other-token"_s))).body.contains("another token"));
    QCOMPARE(answer(post(reportPath, reportWith(id))).status, 200);
    QCOMPARE(answer(post(reportPath, reportWith(id))).status, 422); // one upload, one report
}

void TestSandbox::keepsUploadsAndReportsOverARestart()
{
    QCOMPARE(answer(post(reportPath, with(goodReport(), {{u"message"_s, u"older"_s}}))).status, 200);
    const QString id = uploadWhole(pngBytes);
    m_sandbox.reset();
    QVERIFY(QDir(m_folder->path()).mkpath(u"reports/broken"_s));
    for (const auto &name : {u"reports/broken/report.json"_s, u"uploads/broken.json"_s}) {
        QFile file(m_folder->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("{") == 1);
    }

    start();
    QCOMPARE(m_sandbox->reports().size(), 1);
    QCOMPARE(answer(post(reportPath, reportWith(id))).status, 200);
    start();
    QCOMPARE(m_sandbox->reports().size(), 2);
    QCOMPARE(m_sandbox->reports().newest().attachments.value(0).bytes, 8);
    QCOMPARE(m_sandbox->reports().all().last().body.value("message"_L1).toString(), u"older"_s);
}

void TestSandbox::listensAgainOnTheSamePort()
{
    const QUrl url = m_sandbox->url();
    RawClient client(url);
    QCOMPARE(client.exchange(post(pingPath, goodPing())).status, 200);
    m_sandbox->close();
    QCOMPARE(client.receiveAll(), QByteArray());
    RawClient refused(url);
    QCOMPARE(refused.receiveAll(), QByteArray());
    QCOMPARE(refused.socket.error(), QAbstractSocket::ConnectionRefusedError);
    QString error;
    QVERIFY2(m_sandbox->listen(&error), qPrintable(error));
    QCOMPARE(m_sandbox->url(), url);
    QCOMPARE(pingStatus(), 200);

    connect(m_sandbox.get(), &Sandbox::requestAnswered, m_sandbox.get(), &Sandbox::close);
    RawClient unlucky(url);
    unlucky.send(post(pingPath, goodPing()));
    QCOMPARE(unlucky.receiveAll(), QByteArray());
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
    const QByteArray chunked = "Transfer-Encoding: chunked"_ba;
    row("byte by byte", bytes, {200}, false);
    row("three at once", {ping + "\r\n"_ba + ping + ping}, {200, 200, 200}, false);
    row("in chunks", {head(chunked), chunks, ping}, {200, 200}, false);
    row("after asking first", {head("Expect: 100-continue\r\n"_ba + length), json}, {100, 200}, false);
    row("HTTP/1.0", {head(length, "1.0"_ba) + json}, {200}, true);
    row("two lengths", {head(length + "\r\n"_ba + length) + json}, {400}, true);
    row("length and chunks", {head(length + "\r\n"_ba + chunked) + json}, {400}, true);
    row("bad chunk size", {head(chunked) + "0x5\r\n"_ba}, {400}, true);
    row("signed chunk size", {head(chunked) + "-0\r\n\r\n"_ba}, {400}, true);
    row("chunks of more than there can be", {head(chunked) + "5\r\n12345\r\n7fffffffffffffff\r\n1"_ba}, {413},
        true);
    row("huge head", {"GET / HTTP/1.1\r\nHost: localhost\r\nX: "_ba + QByteArray(70000, 'x')}, {431}, true);
    row("no HTTP", {"hello\r\n\r\n"_ba}, {400}, true);
    row("huge body", {head("Content-Length: 5000000"_ba)}, {413}, true);
}

void TestSandbox::readsARequestHoweverItIsSent()
{
    QFETCH(QList<QByteArray>, pieces);
    QFETCH(QList<int>, statuses);
    QFETCH(bool, ends);
    RawClient client(m_sandbox->url());
    QVERIFY(waitUntil([&] { return client.socket.state() == QAbstractSocket::ConnectedState; }));
    for (const QByteArray &piece : pieces) {
        client.send(piece);
        QVERIFY(waitUntil([&] { return client.socket.bytesToWrite() == 0; }));
        QCoreApplication::processEvents();
    }
    for (const int status : statuses)
        QCOMPARE(client.receive().status, status);
    if (ends)
        QCOMPARE(client.receiveAll(), QByteArray());
    else
        QCOMPARE(client.exchange(post(pingPath, goodPing())).status, 200);
}

void TestSandbox::takesLargeUploadsAtTheSameTime()
{
    const QByteArray video(20'000'000, 'v');
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 3; ++i) {
        const QByteArray bytes = put(reserve(video.size()), video);
        clients.push_back(std::make_unique<RawClient>(m_sandbox->url()));
        clients.back()->send(bytes);
    }
    QCOMPARE(pingStatus(), 200); // nobody has to wait for the bytes
    for (const auto &client : clients)
        QCOMPARE(client->receive().header("ETag"_ba), etagOf(video));
}

void TestSandbox::leavesNothingOfAnUploadThatBrokeOff()
{
    const auto parts = [this] {
        return QDir(m_folder->filePath(u"uploads"_s)).entryList({u"*.part"_s}).size();
    };
    const QByteArray whole = put(reserve(100000), QByteArray(100000, 'v'));
    RawClient client(m_sandbox->url());
    client.send(whole.left(50000));
    QVERIFY(waitUntil([&] { return parts() == 1; }));
    client.socket.disconnectFromHost();
    QVERIFY(waitUntil([&] { return parts() == 0; }));
    QCOMPARE(m_sandbox->requests().last().status, 0);
    QVERIFY(m_sandbox->requests().last().deviations.value(0).contains("client left"_L1));
    QCOMPARE(answer(whole).status, 200); // the reservation still holds
}

void TestSandbox::isControlledOverHttp()
{
    const QByteArray faults = "/sandbox/faults"_ba;
    const QByteArray fault = R"({"path": "/v1/sdk/devices", "status": 429})"_ba;
    QCOMPARE(answer(request("POST"_ba, faults, fault, "Content-Type: text/plain\r\n"_ba)).status, 415);
    QVERIFY(answer(request("POST"_ba, faults, "{\"x\":1}"_ba)).body.contains("x is not a known key"));
    QCOMPARE(answer(request("POST"_ba, faults, '[' + fault + ',' + fault + ']')).status, 200);
    QCOMPARE(pingStatus(), 429);
    const Reply waiting = answer(request("GET"_ba, faults));
    QCOMPARE(QJsonDocument::fromJson(waiting.body).array().size(), 1);
    QCOMPARE(answer(request("DELETE"_ba, faults)).body, "[]"_ba);
    QCOMPARE(pingStatus(), 200);

    const Reply listed = answer(request("GET"_ba, "/sandbox/requests"_ba));
    QCOMPARE(QJsonDocument::fromJson(listed.body).array().size(), 2);
    QVERIFY(!listed.body.contains(TestService::token().toLatin1()));

    RawClient head(m_sandbox->url());
    head.send("HEAD / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n"_ba);
    const QByteArray bytes = head.receiveAll();
    QVERIFY(bytes.startsWith("HTTP/1.1 200 ") && bytes.endsWith("\r\n\r\n"));
}

void TestSandbox::servesNothingOutsideAReport()
{
    QFile secret(m_folder->filePath(u"secret"_s));
    QVERIFY(secret.open(QIODevice::WriteOnly));
    QCOMPARE(answer(post(reportPath, goodReport())).status, 200);
    const QByteArray base = "/sandbox/reports/"_ba + m_sandbox->reports().newest().id.toLatin1();
    QCOMPARE(answer(request("GET"_ba, base + "/report.json"_ba)).status, 200);
    for (const char *rest :
         {"/meta.json", "/../../secret", "/%2e%2e/%2e%2e/secret", "/..%2f..%2fsecret", "//secret", "/", ""})
        QVERIFY2(answer(request("GET"_ba, base + rest)).status == 404, rest);
}

void TestSandbox::answersOnlyToLoopbackNames()
{
    const std::pair<const char *, int> hosts[] = {{"LOCALHOST:1", 200},
                                                  {"[::1]:8080", 200},
                                                  {"127.0.0.1.evil.example", 403},
                                                  {"localhost#.evil.example", 403},
                                                  {"evil.example\r\nHost: localhost", 400}};
    for (const auto &[host, status] : hosts) {
        for (const char *target : {"/", "/sandbox/reports"}) {
            const QByteArray get = "GET "_ba + target + " HTTP/1.1\r\nHost: "_ba + host + "\r\n\r\n"_ba;
            QVERIFY2(answer(get).status == status, host);
        }
    }
}

void TestSandbox::speaksTls()
{
    const Certificate certificate;
    TestService service(certificate.certificateFile(), certificate.keyFile());
    RawClient client(service.url());
    const QByteArray video(10'000'000, 'v');
    const QJsonObject init = client.exchange(post(initPath, goodInit(video.size()))).json();
    QVERIFY(init.value("upload_url"_L1).toString().startsWith("https://127.0.0.1:"_L1));
    QCOMPARE(client.exchange(put(init, video)).header("ETag"_ba), etagOf(video));
}

// The fault run shows what a client has of the faults, but not whether it lost a connection in an orderly
// way.
void TestSandbox::endsAConnectionAsAFaultSays_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::newRow(R"({"stall": "inBody", "body": "0123456789"})") << "open"_ba;
    QTest::newRow(R"({"cut": "inBody", "body": "0123456789"})") << "ended"_ba;
    QTest::newRow(R"({"reset": "inBody", "body": "0123456789"})") << "reset"_ba;
}

void TestSandbox::endsAConnectionAsAFaultSays()
{
    QFETCH(QByteArray, state);
    QVERIFY(plays(QTest::currentDataTag()));
    SystemClient client(m_sandbox->url(), post(pingPath, goodPing()));
    QVERIFY(waitUntil([&] { return client.state() == state && client.received.endsWith("01234"); }));
}

void TestSandbox::neverBuffersAnEndlessAnswer()
{
    const auto residentBytes = [] {
        QFile file(u"/proc/self/statm"_s);
        return file.open(QIODevice::ReadOnly)
            ? file.readAll().split(' ').value(1).toLongLong() * ::getpagesize()
            : 0;
    };
    QVERIFY(plays(R"({"endless": true})"_ba));
    RawClient client(m_sandbox->url());
    client.socket.setReadBufferSize(64 * 1024);
    client.send(post(pingPath, goodPing()));
    QVERIFY(waitUntil([&] { return client.socket.bytesAvailable() == 64 * 1024; }));
    const qint64 before = residentBytes();
    // The client stops reading; a service that does not care would go on filling memory meanwhile.
    QVERIFY(!waitUntil([&] { return residentBytes() - before > 16'000'000; }, 300ms));
}

void TestSandbox::playsTheFirstFaultThatIsDue()
{
    QVERIFY(plays(R"([{"path": "/v1/sdk/reports", "status": 500}, {"method": "PUT", "status": 504},
                      {"path": "/v1/sdk/devices", "skip": 2, "times": 2, "status": 501}, {"status": 502}])"));
    for (const int status : {502, 200, 501, 501, 200})
        QCOMPARE(pingStatus(), status);
    QCOMPARE(answer(request("PUT"_ba, "/storage/x"_ba)).status, 504);
}

void TestSandbox::refusesWhatIsNoFault_data()
{
    QTest::addColumn<QString>("named");
    QTest::newRow(R"({"satus": 500})") << u"satus is not a known key"_s;
    QTest::newRow(R"({"status": 99})") << u"status must be from"_s;
    QTest::newRow(R"({"padding": 3, "endless": true})") << u"padding goes into a JSON object"_s;
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
    QVERIFY(!plays(QTest::currentDataTag(), &error));
    QVERIFY2(error.contains(named), qPrintable(error));
    QCOMPARE(pingStatus(), 200); // nor is a part of it kept
}

QTEST_GUILESS_MAIN(TestSandbox)
#include "tst_sandbox.moc"
