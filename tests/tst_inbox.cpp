#include "support/browser.h"
#include "support/test_service.h"

#include <QFile>
#include <QSet>
#include <QTcpSocket>

#include <memory>
#include <optional>
#include <vector>

using namespace zenvor;
using namespace zenvor::test;
using namespace Qt::StringLiterals;

namespace {

QString mediaPath(const QString &name)
{
    return QFINDTESTDATA(u"../examples/media/"_s + name);
}

QJsonObject report(const QString &message)
{
    QByteArray json = R"({"category": "bug", "occurrence_frequency": "almost_every_time",
        "steps": "1. <b>open</b>", "email": "ada@example.com", "allow_contact": true,
        "occurred_at": "2026-11-14T23:35:30Z", "app": {"bundle_id": "%1", "version": "1.2", "build": "34"},
        "device": {"model": "<i>X1</i>", "machine": "x86_64", "os_name": "Debian", "os_version": "12",
                   "locale": "en_GB", "time_zone": "Europe/London", "screen_width": 390,
                   "screen_height": 844, "interface_style": "dark"}})";
    json.replace("%1", TestService::bundleId().toUtf8());
    auto report = QJsonDocument::fromJson(json).object();
    report[u"token"_s] = TestService::token();
    report[u"message"_s] = message;
    return report;
}

const auto isLive = u"document.getElementById('link').className === 'is-live'"_s;

// The smallest contrast between a text and what it stands on, and the text.
const QString lowestContrast = uR"(
    const luminance = (rgb) => rgb.map((v) => v / 255)
        .map((v) => v <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4)
        .reduce((sum, v, i) => sum + v * [0.2126, 0.7152, 0.0722][i], 0);
    const numbers = (colour) => colour.match(/[\d.]+/g).map(Number);
    const ground = (element) => {
        const colour = element ? numbers(getComputedStyle(element).backgroundColor) : [255, 255, 255];
        return colour.length === 3 || colour[3] === 1 ? colour.slice(0, 3) : ground(element.parentElement);
    };
    let lowest = [99, ''];
    const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
    while (walker.nextNode()) {
        const element = walker.currentNode.parentElement;
        if (!walker.currentNode.data.trim() || !element.checkVisibility() || element.closest('.unseen'))
            continue;
        const pair = [numbers(getComputedStyle(element).color).slice(0, 3), ground(element)].map(luminance);
        const ratio = (Math.max(...pair) + 0.05) / (Math.min(...pair) + 0.05);
        if (ratio < lowest[0])
            lowest = [ratio, walker.currentNode.data.trim()];
    }
    return lowest;
)"_s;

} // namespace

/// The inbox page as a developer has it before them.
class TestInbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { m_browser.reset(); }

    void tellsHowToSendAFirstReport();
    void showsTheNewestFirstAndTextsAsText();
    void followsANewReportAndKeepsWhatIsOpenAndPlaying();
    void survivesARestartOfTheSandbox();
    void playsAVideoFromAnywhereInIt();
    void canBeReadInLightAndDark();
    void fitsAPhone_data();
    void fitsAPhone();
    void leadsToOlderReports();
    void sendsThePartOfAFileThatIsAskedFor_data();
    void sendsThePartOfAFileThatIsAskedFor();
    void limitsTheNumberOfOpenStreams();

private:
    /// Puts a report into the store; an open page hears nothing of it.
    void keep(const QJsonObject &body, const QStringList &media = {});
    void post(const QJsonObject &body);
    void openInbox() { m_browser->open(m_service->url(u"/"_s)); }
    /// The same reply, when all of it is there; the network access manager keeps it.
    QNetworkReply *finished(QNetworkReply *reply);
    QByteArray clipTarget() const;
    QString text(const QString &selector)
    {
        return m_browser->valueOf(u"document.querySelector('%1').textContent"_s.arg(selector)).toString();
    }

    QNetworkAccessManager m_network;
    std::optional<Browser> m_browser;
    std::unique_ptr<TestService> m_service;
};

void TestInbox::initTestCase()
{
    m_network.setProxy(QNetworkProxy::NoProxy);
    m_browser.emplace();
}

void TestInbox::init()
{
    m_service = std::make_unique<TestService>();
    m_browser->setViewport(1200, 900);
}

// A broken Content-Security-Policy, a failing script and a missing file all end in the console.
void TestInbox::cleanup()
{
    QCOMPARE(m_browser->takeConsoleErrors(), QStringList());
    m_browser->open(QUrl(u"about:blank"_s));
}

void TestInbox::keep(const QJsonObject &body, const QStringList &media)
{
    const QTemporaryDir folder;
    QList<sandbox::AttachmentSource> files;
    for (const QString &name : media) {
        const QString path = folder.filePath(name);
        QVERIFY(QFile::copy(mediaPath(name), path));
        const bool isVideo = name.endsWith(".mp4"_L1);
        files << sandbox::AttachmentSource{path, isVideo ? u"video"_s : u"screenshot"_s,
                                           isVideo ? u"video/mp4"_s : u"image/png"_s, QFileInfo(path).size()};
    }
    QString error;
    QVERIFY2(m_service->sandbox().reports().add(body, files, &error), qPrintable(error));
}

QNetworkReply *TestInbox::finished(QNetworkReply *reply)
{
    [[maybe_unused]] const bool isInTime = QTest::qWaitFor([&] { return reply->isFinished(); }, 10000);
    return reply;
}

void TestInbox::post(const QJsonObject &body)
{
    QNetworkRequest request(m_service->url(u"/v1/sdk/reports"_s));
    request.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);
    auto *reply = finished(m_network.post(request, QJsonDocument(body).toJson()));
    QVERIFY2(reply->error() == QNetworkReply::NoError, reply->readAll().constData());
}

QByteArray TestInbox::clipTarget() const
{
    return "/sandbox/reports/"_ba + m_service->sandbox().reports().newest().id.toLatin1() + "/1-video.mp4"_ba;
}

void TestInbox::tellsHowToSendAFirstReport()
{
    openInbox();
    QVERIFY(text(u"#welcome"_s).contains(m_service->url().toString()));
    QVERIFY(text(u"#welcome"_s).contains(TestService::bundleId()));
    QVERIFY(!text(u"html"_s).contains(TestService::token()));

    post(report(u"The first"_s));
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('.message')?.textContent === 'The first'"_s));
    QVERIFY(m_browser->valueOf(u"document.getElementById('welcome') === null"_s).toBool());
    QCOMPARE(text(u"#count"_s), u"1 report"_s);
}

void TestInbox::showsTheNewestFirstAndTextsAsText()
{
    const QString attack = u"<img src=x onerror=document.title='owned'>{{steps}}"_s;
    keep(report(u"older"_s));
    QJsonObject newer = report(attack);
    newer[u"email"_s] = u"\"><script>document.title='owned'</script>@example.com"_s;
    keep(newer);
    openInbox();
    QVERIFY(m_browser->becomesTrue(isLive));
    // The same texts by the other way: into the page that is open.
    post(newer);
    QVERIFY(m_browser->becomesTrue(u"document.querySelectorAll('.report').length === 3"_s));

    const QJsonArray messages =
        m_browser->valueOf(u"[...document.querySelectorAll('.message')].map((m) => m.textContent)"_s)
            .toArray();
    QCOMPARE(messages, (QJsonArray{attack, attack, u"older"_s}));
    QVERIFY(!m_browser->valueOf(u"document.title"_s).toString().contains("owned"_L1));
    QCOMPARE(m_browser->valueOf(u"document.querySelectorAll('.report :is(img, script, b, i)').length"_s), 0);
    for (const auto &said : {u"1. <b>open</b>"_s, u"<i>X1</i>"_s, u"May be contacted"_s,
                             u"Almost every time"_s, newer[u"email"_s].toString()})
        QVERIFY2(text(u".report"_s).contains(said), qPrintable(said));
}

void TestInbox::followsANewReportAndKeepsWhatIsOpenAndPlaying()
{
    keep(report(u"older"_s), {u"clip.mp4"_s});
    openInbox();
    m_browser->run(uR"(
        const video = document.querySelector('video');
        document.querySelector('.facts').open = true;
        video.loop = true;
        video.muted = true;
        return video.play();
    )"_s);
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('video').currentTime > 0.2"_s));

    post(report(u"newer"_s));
    QVERIFY(m_browser->becomesTrue(u"document.querySelectorAll('.report').length === 2"_s));
    QCOMPARE(text(u".message"_s), u"newer"_s);
    QVERIFY(text(u"[aria-live=polite]"_s).contains("newer"_L1));
    QVERIFY(m_browser->valueOf(u"document.querySelectorAll('.facts')[1].open"_s).toBool());
    QVERIFY(!m_browser->valueOf(u"document.querySelector('video').paused"_s).toBool());
    QVERIFY(m_browser->valueOf(u"document.querySelector('video').currentTime > 0.05"_s).toBool());
}

void TestInbox::survivesARestartOfTheSandbox()
{
    keep(report(u"older"_s));
    openInbox();
    QVERIFY(m_browser->becomesTrue(isLive));
    m_browser->run(u"window.isThisPage = true;"_s);
    m_service->sandbox().close();
    QVERIFY(m_browser->becomesTrue(u"document.getElementById('link').className === 'is-away'"_s));

    keep(report(u"while away"_s));
    m_service->listen();
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('.message').textContent === 'while away'"_s));
    post(report(u"after that"_s));
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('.message').textContent === 'after that'"_s));
    QVERIFY(m_browser->valueOf(u"window.isThisPage"_s).toBool());
    const QStringList errors = m_browser->takeConsoleErrors();
    for (const QString &error : errors)
        QVERIFY2(error.contains("ERR_CONNECTION_REFUSED"_L1), qPrintable(error)); // while nobody listened
}

void TestInbox::playsAVideoFromAnywhereInIt()
{
    keep(report(u"with media"_s), {u"screen.png"_s, u"clip.mp4"_s});
    openInbox();
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('img').naturalWidth === 390"_s));
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('video').readyState >= 1"_s));
    QVERIFY(m_browser->valueOf(u"document.querySelector('video').seekable.end(0) > 2.5"_s).toBool());
    m_browser->run(u"document.querySelector('video').currentTime = 2;"_s);
    QVERIFY(m_browser->becomesTrue(
        u"(({seeking, readyState, currentTime}) => !seeking && readyState >= 2 && currentTime === 2)"
        "(document.querySelector('video'))"_s));
    // The picture in full, where the thumbnail leads.
    const QString full = m_browser->valueOf(u"document.querySelector('.picture').href"_s).toString();
    m_browser->open(QUrl(full));
    QVERIFY(m_browser->becomesTrue(u"document.images[0]?.naturalWidth === 390"_s));
}

void TestInbox::canBeReadInLightAndDark()
{
    keep(report(u"with a picture"_s), {u"screen.png"_s});
    QSet<QString> grounds;
    for (const auto &scheme : {u"light"_s, u"dark"_s}) {
        m_browser->preferColorScheme(scheme);
        openInbox();
        m_browser->run(u"document.querySelector('.facts').open = true;"_s);
        QVERIFY(m_browser->becomesTrue(isLive));
        const QJsonArray lowest = m_browser->run(lowestContrast).toArray();
        QVERIFY2(lowest.at(0).toDouble() >= 4.5 && lowest.at(0).toDouble() < 99,
                 qPrintable(scheme + u": "_s + lowest.at(1).toString()));
        grounds
            << m_browser->valueOf(u"getComputedStyle(document.documentElement).backgroundColor"_s).toString();
    }
    QCOMPARE(grounds.size(), 2);
}

void TestInbox::fitsAPhone_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("direction");
    QTest::newRow("one long word") << QString(600, u'W') << u"ltr"_s;
    QTest::newRow("right to left") << u"عند فتح القائمة يتوقف التطبيق"_s << u"rtl"_s;
}

void TestInbox::fitsAPhone()
{
    QFETCH(QString, message);
    QFETCH(QString, direction);
    QJsonObject body = report(message);
    body[u"email"_s] = QString(200, u'a') + u"@example.com"_s;
    body[u"steps"_s] = message;
    keep(body, {u"screen.png"_s, u"clip.mp4"_s});
    m_browser->setViewport(390, 844);
    openInbox();
    m_browser->run(u"document.querySelectorAll('details').forEach((d) => d.open = true);"_s);
    QVERIFY(m_browser->becomesTrue(u"document.querySelector('video').readyState >= 1"_s));
    QCOMPARE(m_browser->valueOf(u"getComputedStyle(document.querySelector('.message')).direction"_s),
             QJsonValue(direction));
    QVERIFY(m_browser->valueOf(u"document.documentElement.scrollWidth <= innerWidth"_s).toBool());
    const auto outside = m_browser->run(uR"(
        return [...document.querySelectorAll('.report *')]
            .filter((e) => e.getBoundingClientRect().right > innerWidth).map((e) => e.outerHTML);
    )"_s);
    QCOMPARE(outside.toArray(), QJsonArray());
    const auto hardToHit = m_browser->run(uR"(
        return [...document.querySelectorAll('a, summary, video')].filter((e) => e.checkVisibility())
            .filter((e) => e.getBoundingClientRect().height < 44).map((e) => e.outerHTML);
    )"_s);
    QCOMPARE(hardToHit.toArray(), QJsonArray());
}

void TestInbox::leadsToOlderReports()
{
    for (int i = 1; i <= 130; ++i)
        keep(report(u"number %1"_s.arg(i)));
    openInbox();
    QCOMPARE(text(u".message"_s), u"number 130"_s);
    QCOMPARE(text(u"#count"_s), u"130 reports"_s);
    // With the keyboard, as somebody does who has no pointer.
    m_browser->run(u"document.querySelector('#pages a[rel=next]').focus();"_s);
    m_browser->type(QChar(0xE007)); // Enter
    QVERIFY(m_browser->becomesTrue(u"location.search !== '' && document.readyState === 'complete'"_s));
    QCOMPARE(text(u".message"_s), u"number 30"_s);
    QCOMPARE(text(u".report:last-of-type .message"_s), u"number 1"_s);
    QCOMPARE(text(u"#pages"_s), u"Newest reports"_s);
}

void TestInbox::sendsThePartOfAFileThatIsAskedFor_data()
{
    QTest::addColumn<QByteArray>("range");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("contentRange"); // "N" is the size of the file
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("length"); // -1: to the end
    const auto row = [](const char *range, int status, const char *contentRange, int first, int length) {
        QTest::newRow(range) << QByteArray(range) << status << QByteArray(contentRange) << first << length;
    };
    row("bytes=0-0", 206, "bytes 0-0/N", 0, 1);
    row("bytes=4000-", 206, "bytes 4000-L/N", 4000, -1);
    row("bytes=4000-99999999999999999999", 206, "bytes 4000-L/N", 4000, -1);
    row("bytes=99999999-", 416, "bytes */N", 0, 0);
    row("bytes=-0", 416, "bytes */N", 0, 0);
    row("bytes=-99999999", 206, "bytes 0-L/N", 0, -1);
    row("bytes=5-4", 200, "", 0, -1);
    row("bytes=1-2,4-5", 200, "", 0, -1);
    row("lines=1-2", 200, "", 0, -1);
}

void TestInbox::sendsThePartOfAFileThatIsAskedFor()
{
    QFETCH(QByteArray, range);
    QFETCH(int, status);
    QFETCH(QByteArray, contentRange);
    QFETCH(int, first);
    QFETCH(int, length);
    keep(report(u"with a video"_s), {u"clip.mp4"_s});
    QFile file(mediaPath(u"clip.mp4"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray clip = file.readAll();
    contentRange.replace("N", QByteArray::number(clip.size()));
    contentRange.replace("L", QByteArray::number(clip.size() - 1));

    QNetworkRequest request(m_service->url(QString::fromLatin1(clipTarget())));
    request.setRawHeader("Range", range);
    auto *reply = finished(m_network.get(request));
    QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), status);
    QCOMPARE(reply->rawHeader("Content-Range"), contentRange);
    QCOMPARE(reply->readAll(), clip.mid(first, length));
    QCOMPARE(reply->rawHeader("X-Content-Type-Options"), "nosniff"_ba);
    QVERIFY(reply->rawHeader("Content-Disposition").startsWith("inline; filename=\"2"));
}

void TestInbox::limitsTheNumberOfOpenStreams()
{
    const QByteArray request = "GET /sandbox/events HTTP/1.1\r\nHost: localhost\r\n\r\n"_ba;
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    const auto open = [&] {
        auto socket = std::make_unique<QTcpSocket>();
        socket->connectToHost(u"127.0.0.1"_s, static_cast<quint16>(m_service->url().port()));
        socket->write(request);
        [[maybe_unused]] const bool isAnswered =
            QTest::qWaitFor([&] { return socket->bytesAvailable() > 12; });
        const QByteArray status = socket->peek(12).mid(9);
        sockets.push_back(std::move(socket));
        return status;
    };
    while (sockets.size() < 16)
        QCOMPARE(open(), "200"_ba);
    QCOMPARE(open(), "503"_ba);
    sockets.clear(); // who leaves makes room
    QTRY_COMPARE(open(), "200"_ba);
}

QTEST_GUILESS_MAIN(TestInbox)
#include "tst_inbox.moc"
