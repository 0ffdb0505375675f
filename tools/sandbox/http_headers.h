#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

namespace zenvor::sandbox {

/// Header fields in the order and the spelling of the wire.
using Headers = QList<QPair<QByteArray, QByteArray>>;

/// Every value given for \a name (compared without regard to case), in order.
QList<QByteArray> headerValues(const Headers &headers, const QByteArray &name);

/// Whether one of the comma-separated words of the header \a name is \a word, both without regard to case.
bool headerHasWord(const Headers &headers, const QByteArray &name, const QByteArray &word);

/// Replaces every field of that name, or appends one.
void setHeader(Headers &headers, const QByteArray &name, const QByteArray &value);

} // namespace zenvor::sandbox
