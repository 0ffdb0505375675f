#include "larder.h"

#include <QCoreApplication>
#include <QLocale>
#include <QQuickWindow>

// Made by the build. Named here, because a linker leaves out of a static library what nobody refers to.
void qml_register_types_Larder();

using namespace Qt::StringLiterals;

Larder::Larder()
{
    QCoreApplication::setApplicationVersion(u"1.4.0"_s);
}

QQuickWindow *Larder::open()
{
    [[maybe_unused]] auto *volatile keepsRegistration = &qml_register_types_Larder; // which runs by itself
    m_engine.load(QUrl(u"qrc:/qt-project.org/imports/Larder/qml/Main.qml"_s));
    return m_engine.rootObjects().isEmpty()
        ? nullptr
        : qobject_cast<QQuickWindow *>(m_engine.rootObjects().constFirst());
}

QString Language::code() const
{
    return QLocale().name().section(u'_', 0, 0);
}

void Language::setCode(const QString &code)
{
    if (code == this->code())
        return;
    QLocale::setDefault(QLocale(code)); // the library asks for it whenever a screen opens
    Q_EMIT changed();
}
