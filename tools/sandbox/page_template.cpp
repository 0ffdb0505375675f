#include "sandbox/page_template.h"

#include <QFile>

// The linker leaves out what nobody in a static library refers to, and with it the registration of its
// resources.
static void registerInboxFiles()
{
    Q_INIT_RESOURCE(zenvor_inbox);
}

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

QByteArray inboxFile(const QString &name)
{
    registerInboxFiles();
    QFile file(u":/zenvor/inbox/"_s + name);
    [[maybe_unused]] const bool isThere = file.open(QIODevice::ReadOnly);
    Q_ASSERT(isThere);
    return file.readAll();
}

QString filledTemplate(const QString &fileName, const QHash<QString, QString> &values)
{
    const QString source = QString::fromUtf8(inboxFile(fileName));
    QString filled;
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = source.indexOf("{{"_L1, from);
        const qsizetype close = open < 0 ? -1 : source.indexOf("}}"_L1, open);
        if (close < 0)
            break;
        const QString name = source.mid(open + 2, close - open - 2);
        Q_ASSERT_X(values.contains(name), "filledTemplate", qPrintable(name));
        filled += QStringView(source).mid(from, open - from);
        filled += values.value(name);
        from = close + 2;
    }
    filled += QStringView(source).mid(from);
    return filled;
}

} // namespace zenvor::sandbox
