#pragma once

#include <QLocale>
#include <QString>
#include <QVariant>

#include <initializer_list>
#include <memory>

class QTranslator;

namespace zenvor {

/// The texts that users see, in the language of the application: looked up by key in a table of the resource
/// bundle, "zenvor_<language>.qm", with an English default at each place that looks one up. The language is
/// the one that QLocale() prefers when a text is looked up, so that a host that switches its language
/// switches the next screen's. The table is read when the language changes. Main thread.
class StringTable
{
public:
    /// The table of the process.
    static StringTable &shared();

    /// Reads the tables in \a bundle, a folder.
    explicit StringTable(QString bundle);
    ~StringTable();

    /// The text for \a key, or \a value if the table has none. Plain text, whatever it looks like.
    QString localizedString(const QByteArray &key, const QString &value);

    /// The same with \a arguments in the place of "%d" (a whole number, as the current locale writes it) and
    /// "%@" (a text), in their order. What has no fitting argument stays as it is; "%%" is a per cent sign.
    QString localizedString(const QByteArray &key, const QString &value,
                            std::initializer_list<QVariant> arguments);

    /// Left to right unless the texts are from a table of a language that is written the other way.
    Qt::LayoutDirection layoutDirection();

private:
    void readTable();

    const QString m_bundle;
    QLocale m_locale;
    std::unique_ptr<QTranslator> m_translator; // null until the first text
};

/// What the operation of that name does with the shared table.
QString localizedString(const QByteArray &key, const QString &value);
QString localizedString(const QByteArray &key, const QString &value,
                        std::initializer_list<QVariant> arguments);

} // namespace zenvor
