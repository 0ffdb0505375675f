#include "resources/string_table.h"

#include "resources/resource_bundle_accessor.h"

#include <QFileInfo>
#include <QTranslator>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

// What stands for the placeholder of \a kind; nothing if \a argument does not fit.
std::optional<QString> substitute(QChar kind, const QVariant &argument)
{
    if (kind == u'@' && argument.typeId() == QMetaType::QString)
        return argument.toString();
    if (kind == u'd' && argument.canConvert<qlonglong>() && argument.typeId() != QMetaType::QString) {
        QLocale locale;
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
        return locale.toString(argument.toLongLong());
    }
    return std::nullopt;
}

// A table is from outside: nothing in it may be taken for more than a text with these placeholders.
QString format(const QString &text, std::initializer_list<QVariant> arguments)
{
    QString result;
    auto argument = arguments.begin();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text.at(i + 1) : QChar();
        if (text.at(i) != u'%') {
            result += text.at(i);
        } else if (next == u'%') {
            result += u'%';
            ++i;
        } else if (const auto value =
                       argument != arguments.end() ? substitute(next, *argument) : std::nullopt) {
            result += *value;
            ++argument;
            ++i;
        } else {
            result += u'%';
        }
    }
    return result;
}

} // namespace

StringTable &StringTable::shared()
{
    static auto *table = new StringTable(resourceBundle()); // never destroyed: QML may ask to the end
    return *table;
}

StringTable::StringTable(QString bundle) : m_bundle(std::move(bundle))
{
}

StringTable::~StringTable() = default;

QString StringTable::localizedString(const QByteArray &key, const QString &value)
{
    readTable();
    const auto text = m_translator->translate("zenvor", key.constData());
    return text.isEmpty() ? value : text;
}

QString StringTable::localizedString(const QByteArray &key, const QString &value,
                                     std::initializer_list<QVariant> arguments)
{
    return format(localizedString(key, value), arguments);
}

Qt::LayoutDirection StringTable::layoutDirection()
{
    readTable();
    const auto language = QFileInfo(m_translator->filePath()).completeBaseName().section(u'_', 1);
    return language.isEmpty() ? Qt::LeftToRight : QLocale(language).textDirection();
}

void StringTable::readTable()
{
    const QLocale locale;
    if (m_translator && m_locale == locale)
        return;
    m_locale = locale;
    m_translator = std::make_unique<QTranslator>();
    // What cannot be read leaves the defaults.
    [[maybe_unused]] const bool isThere = m_translator->load(locale, u"zenvor"_s, u"_"_s, m_bundle);
}

QString localizedString(const QByteArray &key, const QString &value)
{
    return StringTable::shared().localizedString(key, value);
}

QString localizedString(const QByteArray &key, const QString &value,
                        std::initializer_list<QVariant> arguments)
{
    return StringTable::shared().localizedString(key, value, arguments);
}

} // namespace zenvor
