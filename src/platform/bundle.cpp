#include "platform/bundle.h"

#include <QGuiApplication>
#include <QVariant>

#include <algorithm>

namespace zenvor {

using namespace Qt::StringLiterals;

namespace {

std::optional<QString> unlessEmpty(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

QString desktopId()
{
    QString name = QGuiApplication::desktopFileName();
    if (name.endsWith(".desktop"_L1))
        name.chop(".desktop"_L1.size());
    return name;
}

std::optional<QString> idFromDomain()
{
    QStringList labels = QCoreApplication::organizationDomain().split(u'.', Qt::SkipEmptyParts);
    QString name = QCoreApplication::applicationName();
    if (labels.isEmpty() || name.isEmpty())
        return std::nullopt;
    std::reverse(labels.begin(), labels.end());
    std::replace_if(
        name.begin(), name.end(), [](QChar c) { return c.isSpace(); }, u'-');
    return (labels.join(u'.') + u'.' + name).toLower();
}

std::optional<QString> buildProperty()
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!application)
        return std::nullopt;
    const QVariant build = application->property("zenvorBuild");
    // toString() would turn a number into a text, and a build number such as 1.10 into another one.
    if (build.metaType() != QMetaType::fromType<QString>())
        return std::nullopt;
    return build.toString();
}

} // namespace

Bundle Bundle::main()
{
    Bundle bundle;
    bundle.m_identifier = unlessEmpty(desktopId());
    if (!bundle.m_identifier)
        bundle.m_identifier = idFromDomain();
    bundle.m_version = unlessEmpty(QCoreApplication::applicationVersion());
    bundle.m_build = buildProperty();
    bundle.m_organizationDomain = QCoreApplication::organizationDomain();
    return bundle;
}

} // namespace zenvor
