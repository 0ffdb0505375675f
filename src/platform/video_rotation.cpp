#include "platform/video_rotation.h"

#include <QIODevice>
#include <QtEndian>

#include <optional>

namespace zenvor {

namespace {

// One of the boxes that such a file consists of.
struct Box
{
    QByteArrayView type;
    QByteArrayView content;
};

constexpr qsizetype headerSize = 8;

// Takes the first box from \a boxes; nothing if there is no whole one.
std::optional<Box> takeBox(QByteArrayView &boxes)
{
    if (boxes.size() < headerSize)
        return std::nullopt;
    const auto size = qFromBigEndian<quint32>(boxes.data());
    if (size < headerSize || size > quint64(boxes.size()))
        return std::nullopt;
    const Box box{boxes.sliced(4, 4), boxes.first(size).sliced(headerSize)};
    boxes = boxes.sliced(size);
    return box;
}

QByteArrayView find(QByteArrayView boxes, QByteArrayView type)
{
    while (const auto box = takeBox(boxes)) {
        if (box->type == type)
            return box->content;
    }
    return {};
}

bool hasPictures(QByteArrayView track)
{
    const auto handler = find(find(track, "mdia"), "hdlr");
    return handler.size() >= 12 && handler.sliced(8, 4) == "vide";
}

// Of the matrix (a b; c d) in the track's header, in steps of a quarter.
int rotation(QByteArrayView track)
{
    const auto header = find(track, "tkhd");
    if (header.isEmpty())
        return 0;
    const qsizetype matrix = header.front() == 1 ? 52 : 40; // times and durations are longer in version 1
    if (header.size() < matrix + 8)
        return 0;
    const auto a = qFromBigEndian<qint32>(header.data() + matrix);
    const auto b = qFromBigEndian<qint32>(header.data() + matrix + 4);
    if (a == 0)
        return b > 0 ? 90 : b < 0 ? 270 : 0;
    return a < 0 && b == 0 ? 180 : 0;
}

// What the box of type moov holds; empty without one.
QByteArray movie(QIODevice &file)
{
    constexpr qint64 longest = 16 * 1024 * 1024;
    constexpr int mostBoxes = 1'000;
    qint64 position = 0;
    for (int i = 0; i < mostBoxes && file.seek(position); ++i) {
        const QByteArray header = file.read(2 * headerSize);
        if (header.size() < headerSize)
            break;
        qint64 start = headerSize;
        qint64 size = qFromBigEndian<quint32>(header.constData());
        if (size == 1 && header.size() == 2 * headerSize) { // the size itself is a long one
            start = 2 * headerSize;
            size = qFromBigEndian<qint64>(header.constData() + headerSize);
        } else if (size == 0) { // up to the end
            size = file.size() - position;
        }
        if (size < start || size > file.size() - position)
            break;
        if (header.sliced(4, 4) == "moov")
            return size <= longest && file.seek(position + start) ? file.read(size - start) : QByteArray();
        position += size;
    }
    return {};
}

} // namespace

int videoRotation(QIODevice &file)
{
    const QByteArray content = movie(file);
    QByteArrayView boxes(content);
    while (const auto box = takeBox(boxes)) {
        if (box->type == "trak" && hasPictures(box->content))
            return rotation(box->content);
    }
    return 0;
}

} // namespace zenvor
