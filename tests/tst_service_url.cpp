#include "client/report_client.h"
#include "client/service_url.h"

#include <zenvor/report_service.h>

#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;

class TestServiceUrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsOnlySafeOrigins_data();
    void acceptsOnlySafeOrigins();
    void isFixedOnceARequestWasPrepared();
    void wantsTheStorageOfASecureServiceSecure();
};

void TestServiceUrl::acceptsOnlySafeOrigins_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("isAccepted");

    for (const auto *url :
         {"https://reports.example", "https://reports.example:8443/", "https://10.0.0.1",
          "http://localhost:8080", "http://127.0.0.1:1", "http://127.1.2.3", "http://[::1]:80"})
        QTest::newRow(url) << QString::fromLatin1(url) << true;
    for (const auto *url :
         {"http://reports.example", "http://10.0.0.1", "http://127.evil.example",
          "http://127.0.0.1.evil.example", "http://127.0.0.256", "http://127.0.099.1",
          "http://localhost.evil.example", "http://[::2]", "ftp://reports.example", "file:///tmp/x",
          "https://", "reports.example", "https://user:pw@reports.example", "https://reports.example/path",
          "https://reports.example?query", "https://reports.example#f", "https://a b", ""})
        QTest::newRow(url) << QString::fromLatin1(url) << false;
}

void TestServiceUrl::acceptsOnlySafeOrigins()
{
    QFETCH(QString, url);
    QFETCH(bool, isAccepted);
    const auto before = reportServiceUrl();
    QCOMPARE(setReportServiceUrl(QUrl(url)), isAccepted);
    QCOMPARE(reportServiceUrl(), isAccepted ? QUrl(url) : before);
}

void TestServiceUrl::isFixedOnceARequestWasPrepared()
{
    QVERIFY(setReportServiceUrl(QUrl(u"https://reports.example:8443/"_s)));
    QCOMPARE(ReportClient::reportEndpoint(), QUrl(u"https://reports.example:8443/v1/sdk/reports"_s));
    QVERIFY(!setReportServiceUrl(QUrl(u"https://other.example"_s)));
    QCOMPARE(ReportClient::uploadInitEndpoint(), QUrl(u"https://reports.example:8443/v1/sdk/uploads/init"_s));
}

void TestServiceUrl::wantsTheStorageOfASecureServiceSecure()
{
    const QUrl secure(u"https://a.example"_s);
    const QUrl local(u"http://127.0.0.1"_s);
    QVERIFY(!isStorageSecureEnough(secure, QUrl(u"http://s.example/x"_s)));
    QVERIFY(!isStorageSecureEnough(secure, QUrl(u"HTTP://s.example/x"_s)));
    QVERIFY(isStorageSecureEnough(secure, QUrl(u"https://s.example/x"_s)));
    QVERIFY(isStorageSecureEnough(local, QUrl(u"http://127.0.0.1:1/x"_s)));
}

QTEST_GUILESS_MAIN(TestServiceUrl)
#include "tst_service_url.moc"
