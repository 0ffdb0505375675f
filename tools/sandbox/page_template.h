#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace zenvor::sandbox {

/// A file of the folder inbox/, which is compiled in.
QByteArray inboxFile(const QString &name);

/// That file with each {{name}} replaced. The values are markup: what comes from outside has to be escaped
/// before. Nothing inside a value is replaced again.
QString filledTemplate(const QString &fileName, const QHash<QString, QString> &values);

} // namespace zenvor::sandbox
