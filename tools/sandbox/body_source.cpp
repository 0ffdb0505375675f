#include "sandbox/body_source.h"

#include <QFile>

#include <algorithm>

#include <zlib.h>

namespace zenvor::sandbox {

namespace {

class BytesSource final : public BodySource
{
public:
    explicit BytesSource(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    QByteArray read(qsizetype limit) override
    {
        const QByteArray piece = m_bytes.mid(m_offset, limit);
        m_offset += piece.size();
        return piece;
    }
    qint64 size() const override { return m_bytes.size(); }

private:
    QByteArray m_bytes;
    qsizetype m_offset = 0;
};

class FileSource final : public BodySource
{
public:
    FileSource(const QString &path, qint64 first, std::optional<qint64> length)
        : m_file(path)
        , m_isOpen(m_file.open(QIODevice::ReadOnly) && m_file.seek(first))
        , m_size(length.value_or(m_file.size() - first))
        , m_left(m_size)
    {
    }

    bool isOpen() const { return m_isOpen; }
    QByteArray read(qsizetype limit) override
    {
        const QByteArray piece = m_file.read(std::min<qint64>(limit, m_left));
        m_left -= piece.size();
        return piece;
    }
    qint64 size() const override { return m_size; }

private:
    QFile m_file;
    bool m_isOpen;
    qint64 m_size;
    qint64 m_left;
};

class FillerSource final : public BodySource
{
public:
    explicit FillerSource(qint64 size) : m_size(size) {}

    QByteArray read(qsizetype limit) override
    {
        const qint64 left = m_size < 0 ? limit : m_size - m_sent;
        const QByteArray piece(std::min<qint64>(limit, left), 'x');
        m_sent += piece.size();
        return piece;
    }
    qint64 size() const override { return m_size; }

private:
    qint64 m_size;
    qint64 m_sent = 0;
};

class GzipSource final : public BodySource
{
    static constexpr qint64 inputAtOnce = 1024 * 1024;

public:
    explicit GzipSource(std::unique_ptr<BodySource> plain) : m_plain(std::move(plain))
    {
        constexpr int gzipWindow = 15 + 16; // zlib's way to ask for the gzip wrapping
        m_isDone = deflateInit2(&m_stream, Z_BEST_COMPRESSION, Z_DEFLATED, gzipWindow, 8, Z_DEFAULT_STRATEGY)
            != Z_OK;
    }
    ~GzipSource() override { deflateEnd(&m_stream); }
    Q_DISABLE_COPY_MOVE(GzipSource)

    QByteArray read(qsizetype limit) override
    {
        QByteArray packed(limit, Qt::Uninitialized);
        m_stream.next_out = reinterpret_cast<Bytef *>(packed.data());
        m_stream.avail_out = static_cast<uInt>(limit);
        qint64 taken = 0;
        // A little for the client is better than a long time spent in filling up the piece.
        const auto isEnough = [&] {
            return taken >= inputAtOnce && m_stream.avail_out < limit;
        };
        while (!m_isDone && m_stream.avail_out > 0 && !isEnough()) {
            if (m_stream.avail_in == 0 && !m_isAtEnd) {
                m_input = m_plain->read(256 * 1024);
                taken += m_input.size();
                m_isAtEnd = m_input.isEmpty();
                m_stream.next_in = reinterpret_cast<Bytef *>(m_input.data());
                m_stream.avail_in = static_cast<uInt>(m_input.size());
            }
            m_isDone = deflate(&m_stream, m_isAtEnd ? Z_FINISH : Z_NO_FLUSH) == Z_STREAM_END;
        }
        packed.truncate(limit - m_stream.avail_out);
        return packed;
    }
    qint64 size() const override { return -1; }

private:
    std::unique_ptr<BodySource> m_plain;
    z_stream m_stream = {};
    QByteArray m_input;
    bool m_isAtEnd = false;
    bool m_isDone = false;
};

} // namespace

std::unique_ptr<BodySource> bytesSource(QByteArray bytes)
{
    return std::make_unique<BytesSource>(std::move(bytes));
}

std::unique_ptr<BodySource> fileSource(const QString &path, qint64 first, std::optional<qint64> length)
{
    auto source = std::make_unique<FileSource>(path, first, length);
    if (!source->isOpen())
        return nullptr;
    return source;
}

std::unique_ptr<BodySource> fillerSource(qint64 size)
{
    return std::make_unique<FillerSource>(size);
}

std::unique_ptr<BodySource> gzipSource(std::unique_ptr<BodySource> plain)
{
    return std::make_unique<GzipSource>(std::move(plain));
}

} // namespace zenvor::sandbox
