#pragma once

#include "sandbox/http_headers.h"

#include <QString>

namespace zenvor::sandbox {

/// The head of one request, as it stood on the wire.
struct RequestHead
{
    QByteArray method;
    QByteArray target; ///< path and query, nothing decoded
    int minorVersion = 1;
    Headers headers;
    bool isChunked = false;
    qint64 contentLength = -1; ///< -1: none was given

    QByteArray path() const { return target.split('?').first(); }
    QByteArray query() const { return target.mid(path().size() + 1); }
    bool wantsContinue() const;
    bool wantsKeepAlive() const;
};

/// Takes the bytes of one connection apart into requests, whatever pieces they come in. No I/O.
///
/// Feed it, then call next() until it answers NeedMore. Each request gives Head, any number of Body, End.
/// Broken is final: the rest of the connection cannot be understood.
class HttpReader
{
public:
    enum class Event { NeedMore, Head, Body, End, Broken };

    static constexpr qint64 headLimit = 64 * 1024;

    void feed(const QByteArray &bytes);
    Event next();

    const RequestHead &head() const { return m_head; }
    /// The piece of the body that the last Body event announced.
    QByteArray takeBody() { return std::move(m_piece); }
    /// To be called after Head: a longer body makes the request Broken with status 413. Unlimited before.
    void setBodyLimit(qint64 bytes) { m_bodyLimit = bytes; }

    int brokenStatus() const { return m_brokenStatus; }
    QString brokenText() const { return m_brokenText; }

private:
    enum class State { Head, FixedBody, ChunkSize, ChunkData, ChunkEnd, Trailers, Broken };

    Event readHead();
    Event readBody();
    Event readChunkSize();
    Event endRequest();
    Event broken(int status, const QString &text);
    bool parseRequestLine(const QByteArray &line);
    bool parseHeaders(const QList<QByteArray> &lines);
    bool parseFraming();
    bool takeLine(QByteArray *line);
    qint64 available() const { return m_buffer.size() - m_offset; }

    QByteArray m_buffer;
    qsizetype m_offset = 0;
    qsizetype m_scanned = 0; // bytes of the buffer already searched for the end of the head
    State m_state = State::Head;
    RequestHead m_head;
    QByteArray m_piece;
    qint64 m_remaining = 0;
    qint64 m_bodySize = 0;
    qint64 m_trailerSize = 0;
    qint64 m_bodyLimit = -1;
    int m_brokenStatus = 0;
    QString m_brokenText;
};

} // namespace zenvor::sandbox
