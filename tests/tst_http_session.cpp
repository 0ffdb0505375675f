#include "platform/awaitable_callback.h"
#include "platform/clock.h"
#include "platform/executor.h"
#include "support/await.h"
#include "support/session.h"
#include "support/test_service.h"

#include <QFile>
#include <QTest>

#include <algorithm>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::TestedSession;
using test::TestService;

/// What the requests of the library do not show: the fault run plays everything else, over each session.
class TestHttpSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_service.reset(); }
    void readsOnlyWhatBelongsToTheAnswer_data();
    void readsOnlyWhatBelongsToTheAnswer();
    void givesUpARedirectWithAHugeBody();
    void asksNoProxyForThisMachine();
    void tellsAnotherHostNoCredentials();
    void keepsNoCookies();
    void tellsHowFarAnUploadHasGone();
    void offersNoCredentialsOfAUrl();
    void refusesUrlsThatAreNotHttp_data();
    void refusesUrlsThatAreNotHttp();
    void sendsTheUrlAsItWasReceived();
    void endsARequestThatIsStopped();
    void servesManyExecutorsAtOnce();

private:
    HttpRequest request(const QByteArray &method, const QString &path, const QByteArray &body = {}) const
    {
        HttpRequest request;
        request.method = method;
        request.url = m_service.url(path);
        request.body = body;
        request.headers.set("Content-Type"_ba, "text/plain"_ba);
        return request;
    }
    /// The status, or the negative code of the failure.
    int outcome(HttpRequest request, StopToken stop = {})
    {
        try {
            return test::await(m_session.send(std::move(request), stop)).status;
        } catch (const UrlError &error) {
            return int(error.code());
        }
    }

    TestService m_service;
    TestedSession m_session{Clock::system()};
};

void TestHttpSession::readsOnlyWhatBelongsToTheAnswer_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("fields behind the body")
        << R"({"garbage":"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\nX-Sum: 1\r\n\r\n"})"_ba
        << "hello"_ba;
    QTest::newRow("endless redirect") << R"([{"redirect":"/storage/t","endless":true},{"body":"there"}])"_ba
                                      << "there"_ba;
}

void TestHttpSession::readsOnlyWhatBelongsToTheAnswer()
{
    QFETCH(QByteArray, fault);
    m_service.reset(fault);
    QTEST(test::await(m_session.send(request("GET"_ba, u"/storage/t"_s))).body, "body");
}

void TestHttpSession::givesUpARedirectWithAHugeBody()
{
    m_service.reset(R"({"redirect":"/storage/t","bodySize":3000000000})");
    QCOMPARE(outcome(request("GET"_ba, u"/storage/t"_s)), -1005);
}

void TestHttpSession::asksNoProxyForThisMachine()
{
    qputenv("http_proxy", "http://127.0.0.1:1");
    m_service.reset(R"({"body":"direct"})");
    const int status = outcome(request("GET"_ba, u"/storage/t"_s));
    qunsetenv("http_proxy");
    QCOMPARE(status, 200);
}

void TestHttpSession::tellsAnotherHostNoCredentials()
{
    TestService other;
    m_service.reset(R"([{"path":"/near","redirect":"/there"},{"path":"/there","body":"x"},
                        {"path":"/far","redirect":"%1/there"}])"_ba.replace("%1", other.url().toEncoded()));
    const auto secret = [](const TestService &service) {
        const auto headers = service.requests().constLast().headers;
        return sandbox::headerValues(headers, "Authorization"_ba)
            + sandbox::headerValues(headers, "Cookie"_ba);
    };
    auto get = request("GET"_ba, u"/near"_s);
    get.headers.set("Authorization"_ba, "Bearer secret"_ba);
    get.headers.set("Cookie"_ba, "key=secret"_ba);
    outcome(get);
    QCOMPARE(secret(m_service).size(), 2);
    get.url = m_service.url(u"/far"_s);
    outcome(get);
    QCOMPARE(secret(other), QList<QByteArray>());
}

void TestHttpSession::keepsNoCookies()
{
    m_service.reset(R"({"body":"x","times":0,"headers":{"Set-Cookie":"a=b; Path=/"}})");
    outcome(request("GET"_ba, u"/storage/t"_s));
    outcome(request("GET"_ba, u"/storage/t"_s));
    QVERIFY(sandbox::headerValues(m_service.requests().at(1).headers, "Cookie"_ba).isEmpty());
}

void TestHttpSession::tellsHowFarAnUploadHasGone()
{
    m_service.reset(R"({"status":200})");
    QList<qint64> progress; // written on the session's thread, read after the end
    auto put = request("PUT"_ba, u"/storage/t"_s, QByteArray(3000000, 'x'));
    put.onProgress = [&progress](qint64 sent) {
        progress.append(sent);
    };
    QCOMPARE(outcome(put), 200);
    QVERIFY(std::is_sorted(progress.begin(), progress.end()));
    QCOMPARE(progress.constLast(), 3000000);
}

void TestHttpSession::offersNoCredentialsOfAUrl()
{
    m_service.reset(R"({"status":401,"times":0,"headers":{"WWW-Authenticate":"Basic realm=\"x\""}})");
    auto get = request("GET"_ba, u"/storage/t"_s);
    get.url.setUserInfo(u"user:password"_s);
    get.urlAsReceived = get.url.toEncoded();
    QCOMPARE(outcome(get), 401);
    QCOMPARE(m_service.requests().size(), 1);
    QVERIFY(sandbox::headerValues(m_service.requests().at(0).headers, "Authorization"_ba).isEmpty());
}

void TestHttpSession::refusesUrlsThatAreNotHttp_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<int>("expected");

    QTest::newRow("file") << u"file://%1"_s << 0;
    QTest::newRow("data") << u"data:text/plain,x"_s << 0;
    QTest::newRow("relative") << u"%1"_s << -1002;
    QTest::newRow("ftp") << u"ftp://127.0.0.1%1"_s << -1002;
    QTest::newRow("without a host") << u"http:///x"_s << -1003;
    QTest::newRow("empty") << QString() << -1000;
}

void TestHttpSession::refusesUrlsThatAreNotHttp()
{
    QFETCH(QString, url);
    const QTemporaryDir folder;
    const auto path = folder.filePath(u"victim"_s);
    HttpRequest put;
    put.method = "PUT"_ba;
    put.url = QUrl(url.contains(u"%1"_s) ? url.arg(path) : url, QUrl::StrictMode);
    put.body = "overwritten"_ba;
    QTEST(outcome(put), "expected");
    QVERIFY(!QFile::exists(path));
}

void TestHttpSession::sendsTheUrlAsItWasReceived()
{
    // QUrl writes some of this in another way that means the same; a signature may not survive that.
    const auto target = "/storage/./a%2fb/%41?X-Sig=%2F%2b%7e+%3D%20[,]&empty=&p=%C3%A4"_ba;
    auto get = request("GET"_ba, u"/storage/t"_s);
    get.urlAsReceived = m_service.url().toEncoded() + target + "#fragment";
    get.url = QUrl(QString::fromLatin1(get.urlAsReceived), QUrl::StrictMode);
    outcome(get);
    // The session on Qt Network sends what QUrl makes of it.
    const auto normalised = "/storage/a%2Fb/A?X-Sig=%2F%2B~+%3D%20[,]&empty=&p=%C3%A4"_ba;
    QCOMPARE(m_service.requests().at(0).target, test::isQtSession ? normalised : target);

    // What cannot stand on the wire is encoded.
    m_service.reset();
    get.urlAsReceived = m_service.url().toEncoded() + "/storage/\xc3\xa4";
    get.url = QUrl(QString::fromUtf8(get.urlAsReceived), QUrl::StrictMode);
    outcome(get);
    QCOMPARE(m_service.requests().at(0).target, "/storage/%C3%A4"_ba);
}

void TestHttpSession::endsARequestThatIsStopped()
{
    m_service.reset(R"({"stall":"beforeHeaders","times":0})");
    StopSource source;
    QObject scope;
    connect(&m_service.sandbox(), &sandbox::Sandbox::requestAnswered, &scope,
            [&source] { source.requestStop(); });
    QCOMPARE(outcome(request("POST"_ba, u"/storage/t"_s, "x"_ba), source.token()), -999);
    QCOMPARE(outcome(request("POST"_ba, u"/storage/t"_s, "x"_ba), source.token()),
             -999); // stopped before it began
    QCOMPARE(m_service.requests().size(), 1);
}

namespace {

Task<int> countAnswers(HttpSession *session, HttpRequest request, int count)
{
    const auto executor = Executor::current();
    int answers = 0;
    for (int i = 0; i < count; ++i) {
        const auto response = co_await session->send(request);
        answers += response.body == "hello" && Executor::current() == executor;
    }
    co_return answers;
}

} // namespace

void TestHttpSession::servesManyExecutorsAtOnce()
{
    m_service.reset(R"({"path":"/storage/t","body":"hello","times":0})");
    const auto get = request("GET"_ba, u"/storage/t"_s);
    std::vector<std::shared_ptr<Actor>> actors;
    for (int i = 0; i < 4; ++i)
        actors.push_back(std::make_shared<Actor>());
    std::vector<Task<int>> tasks;
    for (int i = 0; i < 16; ++i)
        tasks.push_back(
            runOn(actors[size_t(i % 4)], [this, get] { return countAnswers(&m_session, get, 10); }));
    for (auto &task : tasks)
        QCOMPARE(test::await(std::move(task)), 10);
    QCOMPARE(m_service.requests().size(), 160);
}

QTEST_GUILESS_MAIN(TestHttpSession)

#include "tst_http_session.moc"
