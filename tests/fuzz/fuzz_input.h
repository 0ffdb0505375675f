#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QList>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace zenvor::fuzz {

/// Ends the process, which the fuzzer reports with the input, if a promise is not kept.
inline void require(bool holds, const char *promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}

/// The input in memory of its own, so that the sanitizer sees where it ends.
inline QByteArray bytesOf(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

/// Whether a line of HTTP must not hold \a text.
inline bool hasControlBytes(const QByteArray &text)
{
    return std::any_of(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f;
    });
}

/// Whether Qt's JSON can hold \a text. Half a surrogate pair it cannot write, and a byte order mark at the
/// start of a text is no part of it when Qt reads UTF-8.
inline bool fitsJson(const QString &text)
{
    return text.isValidUtf16() && !text.startsWith(QChar::ByteOrderMark);
}

/// Several texts in one input, between bytes that no text needs (0x1e, "record separator").
class Fields
{
public:
    Fields(const uint8_t *data, size_t size) : m_fields(bytesOf(data, size).split('\x1e')) {}

    /// Empty beyond the last one.
    QByteArray at(qsizetype position) const { return m_fields.value(position); }
    QList<QByteArray> from(qsizetype position) const { return m_fields.mid(position); }

private:
    QList<QByteArray> m_fields;
};

/// What Qt needs for plug-ins, queued calls and names of programs; for the life of the process.
inline void makeApplication()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static const auto *application = new QCoreApplication(count, arguments); // the fuzzer exits from anywhere
    Q_UNUSED(application);
}

} // namespace zenvor::fuzz
