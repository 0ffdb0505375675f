#include "sandbox/http_headers.h"

namespace zenvor::sandbox {

QList<QByteArray> headerValues(const Headers &headers, const QByteArray &name)
{
    QList<QByteArray> values;
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            values << value;
    }
    return values;
}

bool headerHasWord(const Headers &headers, const QByteArray &name, const QByteArray &word)
{
    for (const QByteArray &value : headerValues(headers, name)) {
        for (const QByteArray &part : value.split(',')) {
            if (part.trimmed().compare(word, Qt::CaseInsensitive) == 0)
                return true;
        }
    }
    return false;
}

void setHeader(Headers &headers, const QByteArray &name, const QByteArray &value)
{
    headers.removeIf(
        [&](const auto &header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });
    headers.append({name, value});
}

} // namespace zenvor::sandbox
