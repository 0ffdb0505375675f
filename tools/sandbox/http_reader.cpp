#include "sandbox/http_reader.h"

#include <algorithm>
#include <utility>

namespace zenvor::sandbox {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype lineLimit = 8 * 1024; // of a chunk's size line

bool isTokenText(const QByteArray &text)
{
    const auto isTokenByte = [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9')
            || "!#$%&'*+-.^_`|~"_ba.contains(byte);
    };
    return !text.isEmpty() && std::ranges::all_of(text, isTokenByte);
}

bool isDigits(const QByteArray &text)
{
    return !text.isEmpty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool hasControlBytes(const QByteArray &text)
{
    return std::ranges::any_of(text, [](char c) { return (c >= 0 && c < 0x20 && c != '\t') || c == 0x7f; });
}

} // namespace

bool RequestHead::wantsContinue() const
{
    return minorVersion >= 1 && headerHasWord(headers, "Expect"_ba, "100-continue"_ba);
}

bool RequestHead::wantsKeepAlive() const
{
    return minorVersion >= 1 && !headerHasWord(headers, "Connection"_ba, "close"_ba);
}

void HttpReader::feed(const QByteArray &bytes)
{
    if (available() == 0) {
        m_buffer = bytes;
    } else {
        m_buffer.remove(0, m_offset);
        m_buffer.append(bytes);
    }
    m_scanned = std::max<qsizetype>(0, m_scanned - m_offset);
    m_offset = 0;
}

HttpReader::Event HttpReader::next()
{
    switch (m_state) {
    case State::Head:
        return readHead();
    case State::FixedBody:
    case State::ChunkData:
        return readBody();
    case State::ChunkSize:
        return readChunkSize();
    case State::ChunkEnd:
        if (available() < 2)
            return Event::NeedMore;
        if (m_buffer.mid(m_offset, 2) != "\r\n"_ba)
            return broken(400, u"a chunk of the body is longer than its size line says"_s);
        m_offset += 2;
        m_state = State::ChunkSize;
        return readChunkSize();
    case State::Trailers:
        for (QByteArray line; takeLine(&line);) {
            if (line.isEmpty())
                return endRequest();
            m_trailerSize += line.size();
            if (m_trailerSize > headLimit)
                return broken(431, u"the trailers are too large"_s);
        }
        return m_state == State::Broken ? Event::Broken : Event::NeedMore;
    case State::Broken:
        return Event::Broken;
    }
    Q_UNREACHABLE();
}

HttpReader::Event HttpReader::readHead()
{
    // Blank lines between requests are the leftovers of sloppy clients; every server forgives them.
    while (available() >= 2 && m_buffer.at(m_offset) == '\r' && m_buffer.at(m_offset + 1) == '\n')
        m_offset += 2;
    // Nothing that begins like this becomes a request, and who sends it waits for an answer: most often a
    // client that wants to speak TLS.
    if (available() > 0 && m_buffer.at(m_offset) != '\r' && !isTokenText(m_buffer.mid(m_offset, 1)))
        return broken(400, u"this is no HTTP request; is the client speaking https?"_s);
    m_scanned = std::max(m_scanned, m_offset);
    const qsizetype end = m_buffer.indexOf("\r\n\r\n", std::max(m_offset, m_scanned - 3));
    m_scanned = m_buffer.size();
    if ((end < 0 ? m_buffer.size() : end) - m_offset > headLimit)
        return broken(431, u"the head of the request is larger than 64 KB"_s);
    if (end < 0)
        return Event::NeedMore;

    m_head = RequestHead();
    m_bodyLimit = -1;
    m_bodySize = 0;
    m_trailerSize = 0;
    QList<QByteArray> lines;
    for (qsizetype from = m_offset; from <= end;) {
        qsizetype to = m_buffer.indexOf("\r\n", from);
        lines << m_buffer.mid(from, to - from);
        from = to + 2;
    }
    m_offset = end + 4;
    m_scanned = m_offset;
    if (!parseRequestLine(lines.takeFirst()) || !parseHeaders(lines) || !parseFraming())
        return Event::Broken;
    m_remaining = std::max<qint64>(0, m_head.contentLength);
    m_state = m_head.isChunked ? State::ChunkSize : State::FixedBody;
    return Event::Head;
}

bool HttpReader::parseRequestLine(const QByteArray &line)
{
    const QList<QByteArray> words = line.split(' ');
    if (words.size() != 3 || !isTokenText(words.at(0)) || words.at(1).isEmpty() || hasControlBytes(line)) {
        broken(400, u"the request line is not METHOD TARGET VERSION"_s);
        return false;
    }
    if (words.at(2) != "HTTP/1.1"_ba && words.at(2) != "HTTP/1.0"_ba) {
        broken(505, u"only HTTP/1.0 and HTTP/1.1 are spoken here"_s);
        return false;
    }
    m_head.method = words.at(0);
    m_head.target = words.at(1);
    m_head.minorVersion = words.at(2).endsWith('1') ? 1 : 0;
    return true;
}

bool HttpReader::parseHeaders(const QList<QByteArray> &lines)
{
    for (const QByteArray &line : lines) {
        const qsizetype colon = line.indexOf(':');
        const QByteArray name = line.left(std::max<qsizetype>(0, colon));
        if (!isTokenText(name) || hasControlBytes(line)) {
            broken(400, u"a header line is not NAME: VALUE"_s);
            return false;
        }
        m_head.headers.append({name, line.mid(colon + 1).trimmed()});
    }
    return true;
}

// Two statements about the length of a body are how requests are smuggled; neither is believed.
bool HttpReader::parseFraming()
{
    const auto lengths = headerValues(m_head.headers, "Content-Length"_ba);
    const auto codings = headerValues(m_head.headers, "Transfer-Encoding"_ba);
    if (lengths.size() > 1 || (!lengths.isEmpty() && !codings.isEmpty())) {
        broken(400, u"the length of the body is stated more than once"_s);
        return false;
    }
    if (!codings.isEmpty()) {
        if (codings.size() > 1 || codings.first().compare("chunked"_ba, Qt::CaseInsensitive) != 0) {
            broken(501, u"the only transfer encoding understood is chunked"_s);
            return false;
        }
        m_head.isChunked = true;
    }
    if (!lengths.isEmpty()) {
        bool isNumber = isDigits(lengths.first());
        m_head.contentLength = isNumber ? lengths.first().toLongLong(&isNumber) : -1;
        if (!isNumber) {
            broken(400, u"Content-Length is not a number"_s);
            return false;
        }
    }
    return true;
}

HttpReader::Event HttpReader::readBody()
{
    if (m_bodyLimit >= 0 && m_remaining > m_bodyLimit - m_bodySize)
        return broken(413, u"the body is larger than %1 bytes"_s.arg(m_bodyLimit));
    if (m_remaining == 0) {
        if (m_state == State::FixedBody)
            return endRequest();
        m_state = State::ChunkEnd;
        return next();
    }
    if (available() == 0)
        return Event::NeedMore;

    const qint64 size = std::min(available(), m_remaining);
    // The usual piece of a large body is the whole buffer: handed on without a copy.
    m_piece = size == m_buffer.size() ? std::exchange(m_buffer, {}) : m_buffer.mid(m_offset, size);
    m_offset = m_buffer.isEmpty() ? 0 : m_offset + size;
    m_remaining -= size;
    m_bodySize += size;
    return Event::Body;
}

HttpReader::Event HttpReader::readChunkSize()
{
    QByteArray line;
    if (!takeLine(&line))
        return m_state == State::Broken ? Event::Broken : Event::NeedMore;
    const QByteArray digits = line.split(';').first().trimmed();
    bool isNumber = std::all_of(digits.begin(), digits.end(), isHexDigit); // Qt would take a sign and "0x"
    const qint64 size = isNumber ? digits.toLongLong(&isNumber, 16) : -1;
    if (!isNumber)
        return broken(400, u"the size of a chunk is not a hexadecimal number"_s);
    m_remaining = size;
    m_state = size == 0 ? State::Trailers : State::ChunkData;
    return next();
}

HttpReader::Event HttpReader::endRequest()
{
    m_state = State::Head;
    return Event::End;
}

HttpReader::Event HttpReader::broken(int status, const QString &text)
{
    m_state = State::Broken;
    m_brokenStatus = status;
    m_brokenText = text;
    return Event::Broken;
}

bool HttpReader::takeLine(QByteArray *line)
{
    const qsizetype end = m_buffer.indexOf("\r\n", m_offset);
    if (end < 0) {
        if (available() > lineLimit)
            broken(400, u"a line of the chunked body is too long"_s);
        return false;
    }
    *line = m_buffer.mid(m_offset, end - m_offset);
    m_offset = end + 2;
    return true;
}

} // namespace zenvor::sandbox
