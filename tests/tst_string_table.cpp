#include "resources/resource_bundle_accessor.h"
#include "resources/string_table.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;

/// Texts and the bundle that they come from.
class TestStringTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void substitutesWhatFits_data();
    void substitutesWhatFits();
    void writesNumbersAsTheLocaleDoes();
    void followsTheLanguageOfTheApplication();
    void findsTheFirstBundle();
    void bringsItsOwnBundle();
    void listsEveryText_data();
    void listsEveryText();

private:
    /// Adds a table to m_bundle.
    void write(const QString &language, const QList<std::pair<QString, QString>> &texts);

    std::unique_ptr<QTemporaryDir> m_bundle;
};

void TestStringTable::init()
{
    m_bundle = std::make_unique<QTemporaryDir>();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

void TestStringTable::write(const QString &language, const QList<std::pair<QString, QString>> &texts)
{
    QFile source(m_bundle->filePath(language + u".ts"_s));
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write("<TS version=\"2.1\"><context><name>zenvor</name>");
    for (const auto &[key, text] : texts)
        source.write(u"<message><source>%1</source><translation>%2</translation></message>"_s
                         .arg(key, text.toHtmlEscaped())
                         .toUtf8());
    source.write("</context></TS>");
    source.close();
    QCOMPARE(QProcess::execute(QStringLiteral(ZENVOR_LRELEASE),
                               {u"-silent"_s, source.fileName(), u"-qm"_s,
                                m_bundle->filePath(u"zenvor_%1.qm"_s.arg(language))}),
             0);
}

void TestStringTable::substitutesWhatFits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *text, const char *shown) {
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(shown);
    };
    // The arguments are 2, 5 and "<b>v%d".
    row("plain", "plain");
    row("%d of %d in %@", "2 of 5 in <b>v%d");
    row("%d%%", "2%");
    row("%@ first", "%@ first");
    row("%s %n %x %1 %L1 %", "%s %n %x %1 %L1 %");
    row("%d %d %@ %d %@", "2 5 <b>v%d %d %@");
    row("%d %s %d", "2 %s 5");
    row("100 % d", "100 % d");
    row("%99999999d%n%n", "%99999999d%n%n");
}

void TestStringTable::substitutesWhatFits()
{
    QFETCH(const QString, text);
    StringTable table(m_bundle->path());
    QTEST(table.localizedString("zenvor_x"_ba, text, {2, 5, u"<b>v%d"_s}), "shown");
}

void TestStringTable::writesNumbersAsTheLocaleDoes()
{
    StringTable table(m_bundle->path());
    QCOMPARE(table.localizedString("zenvor_x"_ba, u"%d"_s, {1234567}), u"1234567"_s);
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    QCOMPARE(table.localizedString("zenvor_x"_ba, u"%d"_s, {12}), u"١٢"_s);
}

void TestStringTable::followsTheLanguageOfTheApplication()
{
    write(u"de"_s, {{u"zenvor_ok"_s, u"Gut"_s}, {u"zenvor_done"_s, {}}});
    write(u"ar"_s, {{u"zenvor_ok"_s, u"حسنا"_s}});
    QFile garbage(m_bundle->filePath(u"zenvor_fr.qm"_s));
    QVERIFY(garbage.open(QIODevice::WriteOnly) && garbage.write(QByteArray(5000, '\x3c')) == 5000);
    garbage.close();
    StringTable table(m_bundle->path());
    const auto ok = [&table] {
        return table.localizedString("zenvor_ok"_ba, u"OK"_s);
    };
    QCOMPARE(ok(), u"OK"_s);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Austria));
    QCOMPARE(ok(), u"Gut"_s);
    QCOMPARE(table.localizedString("zenvor_done"_ba, u"Done"_s), u"Done"_s);
    QCOMPARE(table.localizedString("zenvor_clear"_ba, u"Clear"_s), u"Clear"_s);
    QCOMPARE(table.layoutDirection(), Qt::LeftToRight);
    QLocale::setDefault(QLocale(QLocale::Arabic));
    QCOMPARE(ok(), u"حسنا"_s);
    QCOMPARE(table.layoutDirection(), Qt::RightToLeft);
    // Without a table the texts are English, whatever the language is.
    for (const auto language : {QLocale::Hebrew, QLocale::French}) {
        QLocale::setDefault(QLocale(language));
        QCOMPARE(ok(), u"OK"_s);
        QCOMPARE(table.layoutDirection(), Qt::LeftToRight);
    }
}

void TestStringTable::findsTheFirstBundle()
{
    const auto folder = [this](const QString &name) {
        return m_bundle->filePath(name);
    };
    for (const auto &name : {u"b"_s, u"c"_s})
        QVERIFY(QDir().mkpath(folder(name) + u'/' + QString::fromLatin1(resourceBundleName)));
    QVERIFY(QDir().mkpath(folder(u"d"_s)));
    QFile file(folder(u"d"_s) + u'/' + QString::fromLatin1(resourceBundleName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const auto found = [&folder](const QStringList &names) {
        QStringList folders;
        for (const auto &name : names)
            folders.append(name.isEmpty() ? name : folder(name));
        return findResourceBundle(folders).section(u'/', -2, -2);
    };
    QCOMPARE(found({u""_s, u"absent"_s, u"d"_s, u"c"_s, u"b"_s}), u"c"_s);
    QCOMPARE(found({u"d"_s, u"absent"_s}), QString());
}

void TestStringTable::bringsItsOwnBundle()
{
    QCOMPARE(resourceBundle(), u":/com.zenvor.sdk/ZenvorSDK_ZenvorSDK.bundle"_s);
    QCOMPARE(localizedString("zenvor_ok"_ba, u"default"_s), u"OK"_s);
    QCOMPARE(localizedString("zenvor_sdk_version_format"_ba, QString(), {u"0.2.0"_s}), u"Zenvor v0.2.0"_s);
}

void TestStringTable::listsEveryText_data()
{
    QTest::addColumn<QString>("language");
    for (const auto *language : {"en", "de", "ar"})
        QTest::newRow(language) << QString::fromLatin1(language);
}

// Every table has every text, with its placeholders; the English one has the words that stand where they are
// looked up.
void TestStringTable::listsEveryText()
{
    QFETCH(const QString, language);
    QLocale::setDefault(QLocale(language));
    const auto placeholders = [](QString text) {
        return text.replace(u"%%"_s, QString()).remove(QRegularExpression(u"%(?![d@])|[^%d@]|(?<!%)[d@]"_s));
    };
    static const QRegularExpression lookUp(uR"re("(zenvor_\w+)"(?:_ba)?,\s*u?"((?:[^"\\]|\\.)*)")re"_s);
    int texts = 0;
    for (QDirIterator files(QStringLiteral(ZENVOR_SOURCES), {u"*.cpp"_s, u"*.qml"_s}, QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto source = QString::fromUtf8(file.readAll());
        for (auto found = lookUp.globalMatch(source); found.hasNext(); ++texts) {
            const auto text = found.next();
            const auto key = text.captured(1).toUtf8();
            const auto translated = localizedString(key, u"missing"_s);
            QVERIFY2(translated != u"missing"_s, key.constData());
            QVERIFY2(placeholders(translated) == placeholders(text.captured(2)), key.constData());
            if (language == u"en"_s)
                QCOMPARE(translated, text.captured(2));
        }
    }
    QVERIFY(texts > 40);
}

QTEST_GUILESS_MAIN(TestStringTable)

#include "tst_string_table.moc"
