#include "platform/logger.h"

#include <QLoggingCategory>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;

namespace {

QStringList lines;

void record(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    lines.append(u"%1 %2: %3"_s.arg(int(type)).arg(QString::fromLatin1(context.category), text));
}

} // namespace

class TestLogger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTextsVerbatimAndObeysTheHost();
};

void TestLogger::writesTextsVerbatimAndObeysTheHost()
{
    const auto outer = qInstallMessageHandler(record);
    const Logger logger("com.zenvor.sdk"_L1, "Test"_L1);
    logger.info("100 %s \\(x, y: .z) \"q\""_L1);
    logger.debug("hidden until asked for"_L1);
    logger.error("failed"_L1);
    QLoggingCategory::setFilterRules(u"com.zenvor.sdk.Test.debug=true\ncom.zenvor.sdk.Test.info=false"_s);
    logger.debug("asked for"_L1);
    logger.info("not wanted"_L1);
    QLoggingCategory::setFilterRules({});
    qInstallMessageHandler(outer);
    QCOMPARE(lines.join(u'\n'),
             u"4 com.zenvor.sdk.Test: 100 %s \\(x, y: .z) \"q\"\n"
             "2 com.zenvor.sdk.Test: failed\n"
             "0 com.zenvor.sdk.Test: asked for"_s);
}

QTEST_GUILESS_MAIN(TestLogger)
#include "tst_logger.moc"
