#include "support/test_service.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using zenvor::test::TestService;

/// zenvor-cli as a shell runs it, against the sandbox.
class TestCli : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_service.reset(); }
    void saysHowItWent_data();
    void saysHowItWent();
    void sendsWhatTheFormWouldSend();
    void labelsFilesByTheirExtension();
    void takesTheTokenFromTheEnvironment();
    void listsRequestsWithoutSecrets();
    void worksOnTheQueueOfTheApp();

private:
    struct Outcome
    {
        int exitCode = -1;
        QString output;
        QString errors;
        QString lastError() const { return errors.trimmed().section(u'\n', -1); }
    };
    /// \a arguments after those that name the service, the token and the app.
    Outcome run(const QStringList &arguments, const QString &token = TestService::token());
    QString file(const QString &name, const QByteArray &bytes);
    QJsonObject sent(const QByteArray &path) const;

    TestService m_service;
    QTemporaryDir m_files;
};

TestCli::Outcome TestCli::run(const QStringList &arguments, const QString &token)
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ZENVOR_TOKEN"_s, token);
    environment.insert(u"XDG_DATA_HOME"_s, m_files.filePath(u"data"_s));
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"QT_QPA_PLATFORM"_s);
    process.setProcessEnvironment(environment);
    QStringList all{u"--service"_s, m_service.url().toString(), u"--bundle-id"_s, TestService::bundleId()};
    process.start(QStringLiteral(CLI_PROGRAM), all + arguments);
    if (!QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 20000))
        return {};
    return {.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            .output = QString::fromUtf8(process.readAllStandardOutput()),
            .errors = QString::fromUtf8(process.readAllStandardError())};
}

QString TestCli::file(const QString &name, const QByteArray &bytes)
{
    QFile file(m_files.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("no space for a file");
    return file.fileName();
}

QJsonObject TestCli::sent(const QByteArray &path) const
{
    for (const auto &request : m_service.requests()) {
        if (request.target == path)
            return QJsonDocument::fromJson(request.body).object();
    }
    return {};
}

void TestCli::initTestCase()
{
    QVERIFY(QFile::exists(QStringLiteral(CLI_PROGRAM)));
}

void TestCli::saysHowItWent_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("lastError"); // not compared where empty
    QTest::addColumn<int>("requests");

    const QByteArray none;
    const auto row = [](const char *name, const QString &arguments, const QByteArray &fault, int exitCode,
                        const QString &output, const QString &lastError, int requests) {
        QTest::newRow(name) << arguments.split(u' ') << fault << exitCode << output << lastError << requests;
    };
    row("matched", u"validate"_s, none, 0, u"matched\n"_s, {}, 1);
    row("other app", u"validate --bundle-id com.example.other"_s, none, 0, u"bundleMismatch\n"_s, {}, 1);
    row("bad token", u"validate --token x"_s, none, 1, {}, u"SDK token is invalid or revoked."_s, 1);
    row("ping", u"ping --device-id D"_s, none, 0, {}, {}, 1);
    row("refused report", u"report --category bug --message x"_s,
        R"({"status":422,"body":"{\"message\":\"no\"}"})"_ba, 1, {},
        u"Report submit failed with status 422 (host=127.0.0.1): no"_s, 1);
    row("unreadable file", u"report --category bug --message x --attach /nowhere.png"_s, none, 1, {},
        u"/nowhere.png: No such file or directory"_s, 0);
    row("blank message", u"report --category bug --message \u2003"_s, none, 2, {}, {}, 0);
    row("no message", u"report --category bug"_s, none, 2, {}, {}, 0);
    row("unknown category", u"report --category feedback --message x"_s, none, 2, {}, {}, 0);
    row("blank device", u"ping --device-id \u2003"_s, none, 2, {}, {}, 0);
    row("six files", u"report --category bug --message x"_s + u" --attach /nowhere.png"_s.repeated(6), none,
        2, {}, {}, 0);
    row("option of another command", u"validate --message x"_s, none, 2, {}, {}, 0);
    row("no such command", u"present"_s, none, 2, {}, {}, 0);
    row("two commands", u"validate ping"_s, none, 2, {}, {}, 0);
    row("unsafe service", u"validate --service http://reports.example"_s, none, 2, {}, {}, 0);
    row("no URL", u"validate --service reports"_s, none, 2, {}, {}, 0);
}

void TestCli::saysHowItWent()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, fault);
    QFETCH(int, exitCode);
    QFETCH(QString, lastError);
    m_service.reset(fault);
    const auto outcome = run(arguments);
    QCOMPARE(outcome.exitCode, exitCode);
    QTEST(outcome.output, "output");
    QTEST(int(m_service.requests().size()), "requests");
    if (!lastError.isEmpty())
        QCOMPARE(outcome.lastError(), lastError);
    QCOMPARE(outcome.errors.isEmpty(), exitCode == 0);
}

void TestCli::sendsWhatTheFormWouldSend()
{
    const auto arguments =
        u"report --category bug --message a --frequency many_times --allow-contact --email x@y"_s;
    QCOMPARE(run(arguments.split(u' ')).exitCode, 0);
    QVERIFY(m_service.requests().at(0).deviations.isEmpty());
    auto report = sent("/v1/sdk/reports"_ba);
    QCOMPARE(report.value("app"_L1).toObject().value("bundle_id"_L1).toString(), TestService::bundleId());
    for (const auto key : {"token"_L1, "device"_L1, "app"_L1, "occurred_at"_L1})
        report.remove(key);
    const auto members = R"({"category":"bug","message":"a","occurrence_frequency":"many_times",
                             "allow_contact":true,"email":"x@y"})"_ba;
    QCOMPARE(report, QJsonDocument::fromJson(members).object());
}

void TestCli::labelsFilesByTheirExtension()
{
    auto arguments = u"report --category bug --message x"_s.split(u' ');
    for (const auto &path :
         {file(u"empty.png"_s, {}), file(u"clip.MOV"_s, "m"_ba), file(u"notes.txt"_s, "t"_ba)})
        arguments << u"--attach"_s << path;
    QCOMPARE(run(arguments).exitCode, 0);
    const auto &attachments = m_service.sandbox().reports().newest().attachments;
    QCOMPARE(attachments.size(), 2); // nothing is uploaded of the empty one
    QCOMPARE(attachments.at(0).kind + u' ' + attachments.at(0).mimeType, u"video video/quicktime"_s);
    QCOMPARE(attachments.at(1).kind + u' ' + attachments.at(1).mimeType, u"screenshot image/jpeg"_s);
}

void TestCli::takesTheTokenFromTheEnvironment()
{
    QCOMPARE(run({u"validate"_s}, u"wrong"_s).lastError(), u"SDK token is invalid or revoked."_s);
    QCOMPARE(run({u"validate"_s, u"--token"_s, TestService::token()}, u"wrong"_s).exitCode, 0);
    QCOMPARE(run({u"validate"_s}, {}).exitCode, 2);
}

void TestCli::listsRequestsWithoutSecrets()
{
    const auto outcome = run({u"report"_s, u"--verbose"_s, u"--category"_s, u"bug"_s, u"--message"_s,
                              u"my words"_s, u"--attach"_s, file(u"a.png"_s, "p"_ba)});
    const auto lines = outcome.errors.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 4);
    QVERIFY2(lines.at(1).startsWith("PUT "_L1 + m_service.url(u"/storage/"_s).toString()),
             qPrintable(lines.at(1)));
    QVERIFY2(lines.at(3).contains("/v1/sdk/reports ("_L1) && lines.at(3).contains(": 200, "_L1),
             qPrintable(lines.at(3)));
    for (const auto &secret : {TestService::token(), u"my words"_s, u"signature"_s})
        QVERIFY2(!outcome.errors.contains(secret), qPrintable(secret));
}

void TestCli::worksOnTheQueueOfTheApp()
{
    const auto queue = [this](const QString &arguments) {
        return run(arguments.split(u' '));
    };
    const auto devices = [&queue] {
        QStringList names;
        for (const auto &entry : QJsonDocument::fromJson(queue(u"queue show"_s).output.toUtf8()).array())
            names.append(entry.toObject().value("deviceId"_L1).toString());
        return names.join(u' ');
    };
    QCOMPARE(queue(u"queue show"_s).output, u"[]\n"_s);
    for (const auto *device : {"A", "B", "A", "C"})
        QCOMPARE(queue(u"queue enqueue --device-id %1"_s.arg(QString::fromLatin1(device))).exitCode, 0);
    QCOMPARE(devices(), u"A B C"_s);
    QCOMPARE(queue(u"queue flush --max-batch-size 2"_s).exitCode, 0);
    QCOMPARE(m_service.requests().size(), 2);
    QCOMPARE(devices(), u"C"_s);
    QCOMPARE(queue(u"queue show --bundle-id com.example.other"_s).output, u"[]\n"_s);
    QCOMPARE(queue(u"queue flush --max-batch-size -1"_s).exitCode, 2);
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
