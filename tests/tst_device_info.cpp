#include "deviceinfo/device_info_provider.h"
#include "platform/bundle.h"
#include "platform/device.h"
#include "platform/linux_files.h"
#include "platform/locale.h"
#include "platform/vendor_identifier.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QProcess>
#include <QScopeGuard>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <cstdio>
#include <memory>

using namespace zenvor;
using namespace Qt::StringLiterals;

namespace {

constexpr auto absent = "absent"_L1;

QJsonObject report()
{
    const DeviceInfo device = DeviceInfoProvider::makeDeviceInfo();
    const AppInfo app = DeviceInfoProvider::makeAppInfo();
    return {
        {u"machine"_s, device.machine},
        {u"width"_s, device.screenWidth},
        {u"height"_s, device.screenHeight},
        {u"style"_s, device.interfaceStyle},
        {u"bundleId"_s, app.bundleId},
        {u"version"_s, app.version},
        {u"build"_s, app.build},
    };
}

// What this program prints when it is started with "--report <kind of application>".
int reportOf(const QByteArray &kind, int argc, char **argv)
{
    std::unique_ptr<QCoreApplication> application;
    if (kind == "core")
        application = std::make_unique<QCoreApplication>(argc, argv);
    if (kind == "gui")
        application = std::make_unique<QGuiApplication>(argc, argv);
    std::fputs(QJsonDocument(report()).toJson().constData(), stdout);
    return 0;
}

QJsonObject reportFromProcess(const QString &kind, const QString &platform)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {u"--report"_s, kind});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {};
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

} // namespace

class TestDeviceInfo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void readsWhatOsReleaseSays_data();
    void readsWhatOsReleaseSays();
    void passesOverProductNamesThatNobodyFilledIn_data();
    void passesOverProductNamesThatNobodyFilledIn();
    void drawsTheVendorIdentifierFromMachineAndKey_data();
    void drawsTheVendorIdentifierFromMachineAndKey();
    void keysTheVendorIdentifierByDomainThenApplicationId();
    void putsEachValueIntoItsField();
    void namesTheApplication_data();
    void namesTheApplication();
    void takesTheBuildOnlyIfItIsAText();
    void namesTheLocaleInUse();
    void namesTheSystemTimeZone();
    void describesADeviceWithoutAGraphicalApplication_data();
    void describesADeviceWithoutAGraphicalApplication();
    void measuresTheScreenInPoints();
    void reportsTheStyleOfTheKeyWindow();
};

void TestDeviceInfo::cleanup()
{
    QGuiApplication::setDesktopFileName({});
    QCoreApplication::setOrganizationDomain({});
    QCoreApplication::setApplicationName({});
    QCoreApplication::setApplicationVersion({});
    qApp->setProperty("zenvorBuild", {});
    QLocale::setDefault(QLocale::system());
}

void TestDeviceInfo::readsWhatOsReleaseSays_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("version");

    const auto row = [](const char *tag, const QByteArray &text, const QString &name,
                        const QString &version) {
        QTest::newRow(tag) << text << name << version;
    };
    row("double quotes",
        "PRETTY_NAME=\"X 1\"\nNAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\nVERSION=\"12 (b)\"\n",
        u"Debian GNU/Linux"_s, u"12"_s);
    row("single quotes, no last line break", "NAME='A \"B\" \\$C'\nVERSION_ID='1.2'", u"A \"B\" \\$C"_s,
        u"1.2"_s);
    row("escapes", "NAME=\"a \\\"b\\\" \\\\ \\$c \\`d\\` \\n\"\n", u"a \"b\" \\ $c `d` \\n"_s, u""_s);
    row("quote that ends in an escape", "NAME=\"open\\\"\nVERSION_ID=1\n", u"Linux"_s, u"1"_s);
    row("text behind the quotes", "NAME=\"a\"b\nVERSION_ID='1'2\n", u"Linux"_s, u""_s);
    row("comments, blanks, no assignment", "#NAME=no\n\n  NAME=Yes  \nVERSION_ID\n", u"Yes"_s, u""_s);
    row("the last one counts", "NAME=a\nVERSION_ID=1\nNAME=b\nVERSION_ID=2\n", u"b"_s, u"2"_s);
    row("an empty name", "NAME=\"\"\nVERSION_ID=\"\"\n", u"Linux"_s, u""_s);
    row("beyond ASCII", "NAME=\"\xc3\x84pfel\"\n", u"Äpfel"_s, u""_s);
}

void TestDeviceInfo::readsWhatOsReleaseSays()
{
    QFETCH(const QByteArray, text);
    const OsRelease release = parseOsRelease(text);
    QTEST(release.name, "name");
    QTEST(release.versionId, "version");
}

void TestDeviceInfo::passesOverProductNamesThatNobodyFilledIn_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("name");

    QTest::newRow("a name") << "  XPS 13 9310\n"_ba << u"XPS 13 9310"_s;
    QTest::newRow("a name that holds a placeholder") << "OEM Book\n"_ba << u"OEM Book"_s;
    QTest::newRow("blank") << " \n"_ba << QString(absent);
    QTest::newRow("to be filled") << "To be filled by O.E.M.\n"_ba << QString(absent);
    QTest::newRow("default") << "Default string\n"_ba << QString(absent);
}

void TestDeviceInfo::passesOverProductNamesThatNobodyFilledIn()
{
    QFETCH(const QByteArray, text);
    QTEST(parseProductName(text).value_or(absent), "name");
}

void TestDeviceInfo::drawsTheVendorIdentifierFromMachineAndKey_data()
{
    QTest::addColumn<QByteArray>("machineId");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("identifier");

    // The numbers are those of `openssl dgst -sha256 -hmac <key>`, cut and marked as a UUID.
    const QByteArray machine = "0123456789abcdef0123456789abcdef"_ba;
    const QString ofCom = u"9A96D26D-BAF4-41E0-B6F6-58A31E4A6EED"_s;
    const auto row = [](const char *tag, const QByteArray &id, const QString &key,
                        const QString &identifier) {
        QTest::newRow(tag) << id << key << identifier;
    };
    row("Linux", machine, u"example.com"_s, ofCom);
    row("Linux, with the line break", machine + '\n', u"example.com"_s, ofCom);
    row("Windows", "01234567-89AB-CDEF-0123-456789ABCDEF", u"example.com"_s, ofCom);
    row("Android", "9774d56d682e549c", u"com.example.player"_s, u"BD8F62C8-03CB-451D-A78E-23D62530EF2E"_s);
    row("not yet set up", "uninitialized\n", u"example.com"_s, absent);
    row("zero", QByteArray(32, '0'), u"example.com"_s, absent);
    row("no key", machine, u""_s, absent);
    row("blank key", machine, u" "_s, absent);
}

void TestDeviceInfo::drawsTheVendorIdentifierFromMachineAndKey()
{
    QFETCH(const QByteArray, machineId);
    QFETCH(const QString, key);
    QTEST(vendorIdentifier(machineId, key).value_or(absent), "identifier");
}

void TestDeviceInfo::keysTheVendorIdentifierByDomainThenApplicationId()
{
    const QByteArray machine = QSysInfo::machineUniqueId();
    QCOMPARE(Device::identifierForVendor(Bundle::main()), std::nullopt);

    QGuiApplication::setDesktopFileName(u"org.example.player"_s);
    QCOMPARE(Device::identifierForVendor(Bundle::main()), vendorIdentifier(machine, u"org.example.player"));

    QCoreApplication::setOrganizationDomain(u"example.com"_s);
    QCOMPARE(Device::identifierForVendor(Bundle::main()), vendorIdentifier(machine, u"example.com"));
}

void TestDeviceInfo::putsEachValueIntoItsField()
{
    QGuiApplication::setDesktopFileName(u"org.example.player"_s);
    QCoreApplication::setApplicationVersion(u"1.2"_s);
    QCoreApplication::instance()->setProperty("zenvorBuild", u"77"_s);
    const DeviceInfo device = DeviceInfoProvider::makeDeviceInfo();
    QCOMPARE(device.model, Device::model());
    QCOMPARE(device.machine, Device::machine());
    QCOMPARE(device.osName, Device::systemName());
    QCOMPARE(device.osVersion, Device::systemVersion());
    QCOMPARE(device.locale, currentLocaleIdentifier());
    QCOMPARE(device.timeZone, currentTimeZoneIdentifier());
    QCOMPARE(device.identifierForVendor, Device::identifierForVendor(Bundle::main()));
    const AppInfo app = DeviceInfoProvider::makeAppInfo();
    QCOMPARE((QStringList{app.bundleId, app.version, app.build}),
             (QStringList{u"org.example.player"_s, u"1.2"_s, u"77"_s}));
}

void TestDeviceInfo::namesTheApplication_data()
{
    QTest::addColumn<QString>("desktopFileName");
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("identifier");

    const auto row = [](const char *tag, const QString &file, const QString &domain, const QString &name,
                        const QString &identifier) {
        QTest::newRow(tag) << file << domain << name << identifier;
    };
    row("desktop file", u"org.Example.Player"_s, u"example.com"_s, u"x"_s, u"org.Example.Player"_s);
    row("with its suffix", u"org.example.Player.desktop"_s, {}, u"x"_s, u"org.example.Player"_s);
    row("nothing but the suffix", u".desktop"_s, u"example.com"_s, u"x"_s, u"com.example.x"_s);
    row("upper case and blanks", {}, u"Example.COM"_s, u"My Own\tPlayer"_s, u"com.example.my-own-player"_s);
    row("longer domain", {}, u"media.example.co.uk"_s, u"p"_s, u"uk.co.example.media.p"_s);
    row("stray dots", {}, u".example.com."_s, u"p"_s, u"com.example.p"_s);
    row("no domain", {}, {}, u"player"_s, absent);
}

void TestDeviceInfo::namesTheApplication()
{
    QFETCH(const QString, desktopFileName);
    QFETCH(const QString, domain);
    QFETCH(const QString, name);
    QGuiApplication::setDesktopFileName(desktopFileName);
    QCoreApplication::setOrganizationDomain(domain);
    QCoreApplication::setApplicationName(name);
    QTEST(Bundle::main().identifier().value_or(absent), "identifier");
}

void TestDeviceInfo::takesTheBuildOnlyIfItIsAText()
{
    const std::pair<QVariant, QString> builds[] = {{u" 1.10"_s, u" 1.10"_s}, {1.10, {}}, {"42"_ba, {}}};
    for (const auto &[property, build] : builds) {
        qApp->setProperty("zenvorBuild", property);
        QCOMPARE(DeviceInfoProvider::makeAppInfo().build, build);
    }
}

void TestDeviceInfo::namesTheLocaleInUse()
{
    QLocale::setDefault(QLocale(u"pt_BR"_s));
    QCOMPARE(currentLocaleIdentifier(), u"pt_BR"_s);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(currentLocaleIdentifier(), u"en_US_POSIX"_s);
}

void TestDeviceInfo::namesTheSystemTimeZone()
{
    const QByteArray before = qgetenv("TZ");
    const bool wasSet = qEnvironmentVariableIsSet("TZ");
    const auto restore = qScopeGuard([&] { wasSet ? qputenv("TZ", before) : qunsetenv("TZ"); });
    for (const auto &zone : {"Asia/Tokyo"_ba, "America/Argentina/Salta"_ba}) {
        qputenv("TZ", zone);
        QCOMPARE(currentTimeZoneIdentifier(), QString::fromLatin1(zone));
    }
}

void TestDeviceInfo::describesADeviceWithoutAGraphicalApplication_data()
{
    QTest::addColumn<QString>("kind");

    QTest::newRow("no application object") << u"none"_s;
    QTest::newRow("an application without windows") << u"core"_s;
}

void TestDeviceInfo::describesADeviceWithoutAGraphicalApplication()
{
    QFETCH(const QString, kind);
    QProcess uname;
    uname.start(u"uname"_s, {u"-m"_s});
    QVERIFY(uname.waitForFinished());

    const QJsonObject expected{
        {u"machine"_s, QString::fromUtf8(uname.readAllStandardOutput().trimmed())},
        {u"width"_s, 0},
        {u"height"_s, 0},
        {u"style"_s, u"unspecified"_s},
        {u"bundleId"_s, u""_s},
        {u"version"_s, u""_s},
        {u"build"_s, u""_s},
    };
    QCOMPARE(reportFromProcess(kind, u"offscreen"_s), expected);
}

void TestDeviceInfo::measuresTheScreenInPoints()
{
    QTemporaryDir folder;
    QFile screens(folder.filePath(u"screens.json"_s));
    QVERIFY(screens.open(QIODevice::WriteOnly));
    screens.write(R"({"screens": [{"name": "wide", "x": 0, "y": 0, "width": 1280, "height": 720,
                                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}]})");
    screens.close();

    const QJsonObject report = reportFromProcess(u"gui"_s, u"offscreen:configfile="_s + screens.fileName());
    QCOMPARE(report[u"width"].toDouble(), 1280.0);
    QCOMPARE(report[u"height"].toDouble(), 720.0);
    QCOMPARE(report[u"style"].toString(), u"unspecified"_s); // it has no window
}

void TestDeviceInfo::reportsTheStyleOfTheKeyWindow()
{
    QWindow window;
    window.show();
    window.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    window.setProperty("zenvorInterfaceStyle", u"dark"_s);
    QCOMPARE(DeviceInfoProvider::makeDeviceInfo().interfaceStyle, u"dark"_s);
    window.setProperty("zenvorInterfaceStyle", u"light"_s);
    QCOMPARE(DeviceInfoProvider::makeDeviceInfo().interfaceStyle, u"light"_s);
    window.hide();
    QCOMPARE(DeviceInfoProvider::makeDeviceInfo().interfaceStyle, u"unspecified"_s);
}

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--report") == 0)
        return reportOf(argv[2], argc, argv);
    const QGuiApplication application(argc, argv);
    TestDeviceInfo test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_device_info.moc"
