#pragma once

#include <QByteArray>
#include <QIODevice>

#include <cstring>

namespace zenvor {

/// The body of a request as Qt Network takes it: read once, in pieces. Because it cannot go back to its
/// start, the request is never sent a second time behind our back, which Qt otherwise does up to three
/// times when a connection closes before the status line. Shares the bytes.
class QtRequestBody final : public QIODevice
{
public:
    explicit QtRequestBody(QByteArray bytes) : m_bytes(std::move(bytes)) { open(ReadOnly | Unbuffered); }

    bool isSequential() const override { return true; }
    bool seek(qint64) override { return false; }
    bool atEnd() const override { return m_position >= m_bytes.size(); }
    qint64 bytesAvailable() const override { return m_bytes.size() - m_position; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const auto size = qMin(maxSize, bytesAvailable());
        if (size <= 0)
            return -1;
        std::memcpy(data, m_bytes.constData() + m_position, size_t(size));
        m_position += size;
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
    qint64 m_position = 0;
};

} // namespace zenvor
