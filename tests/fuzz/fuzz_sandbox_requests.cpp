#include "fuzz_input.h"
#include "sandbox/byte_range.h"
#include "sandbox/http_reader.h"
#include "sandbox/service.h"

#include <algorithm>
#include <utility>

using namespace zenvor::sandbox;
using namespace zenvor::fuzz;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 bodyLimit = 1000;

/// What a reader made of the bytes of one connection, without regard to how they were cut.
struct Transcript
{
    QByteArray heads;
    QByteArray bodies;
    int requests = 0;
    int brokenStatus = 0;
    QString brokenText;

    friend bool operator==(const Transcript &, const Transcript &) = default;
};

void requireHead(const RequestHead &head)
{
    require(!head.method.isEmpty() && !head.target.isEmpty(), "a request has a method and a target");
    require(!hasControlBytes(head.method + head.target) && !head.target.contains(' '),
            "method and target are one word each");
    require(!(head.isChunked && head.contentLength >= 0), "the length of a body is stated once");
    for (const auto &[name, value] : head.headers) {
        require(!name.isEmpty() && !name.contains(':') && !name.contains(' '), "a header has a name");
        require(!hasControlBytes(name) && !hasControlBytes(value), "a header keeps to its line");
        require(value == value.trimmed(), "the value of a header is trimmed");
    }
    const QByteArray whole = head.query().isEmpty() ? head.path() : head.path() + '?' + head.query();
    require(head.target.startsWith(whole) && !head.path().contains('?'), "path and query are the target");
    const auto range = readRange(head.headers, bodyLimit);
    require(range.kind != ByteRange::Kind::Part
                || (range.first >= 0 && range.first <= range.last && range.last < bodyLimit),
            "a range lies within the file");
    Service::judgeHost(head);
}

/// Whether there is more to come.
bool readNext(HttpReader &reader, Transcript &transcript, qint64 &bodySize)
{
    switch (reader.next()) {
    case HttpReader::Event::Head:
        requireHead(reader.head());
        reader.setBodyLimit(bodyLimit);
        bodySize = 0;
        ++transcript.requests;
        transcript.heads += reader.head().method + ' ' + reader.head().target + '\n';
        for (const auto &[name, value] : reader.head().headers)
            transcript.heads += name + ": " + value + '\n';
        return true;
    case HttpReader::Event::Body: {
        const QByteArray piece = reader.takeBody();
        bodySize += piece.size();
        require(!piece.isEmpty(), "a piece of a body is not empty");
        require(bodySize <= bodyLimit, "a body keeps to its limit");
        transcript.bodies += piece;
        return true;
    }
    case HttpReader::Event::End:
        require(reader.head().contentLength < 0 || bodySize == reader.head().contentLength,
                "a body is as long as its head says");
        transcript.bodies += '\0';
        return true;
    case HttpReader::Event::Broken:
        transcript.brokenStatus = reader.brokenStatus();
        transcript.brokenText = reader.brokenText();
        require(transcript.brokenStatus >= 400 && !transcript.brokenText.isEmpty(), "a refusal says why");
        require(reader.next() == HttpReader::Event::Broken, "what is broken stays broken");
        return false;
    case HttpReader::Event::NeedMore:
        return false;
    }
    Q_UNREACHABLE();
}

Transcript readIn(const QByteArray &bytes, qsizetype pieceSize)
{
    Transcript transcript;
    HttpReader reader;
    qint64 bodySize = 0;
    for (qsizetype from = 0; from < bytes.size() && transcript.brokenStatus == 0; from += pieceSize) {
        reader.feed(bytes.mid(from, pieceSize));
        while (readNext(reader, transcript, bodySize)) {}
    }
    return transcript;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto bytes = bytesOf(data, size);
    const auto whole = readIn(bytes, std::max<qsizetype>(1, bytes.size()));
    for (const qsizetype pieceSize : {1, 7, 64})
        require(readIn(bytes, pieceSize) == whole, "the pieces in which bytes come change nothing");
    return 0;
}
