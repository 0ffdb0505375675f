#pragma once

#include <QByteArrayView>
#include <QSize>

class QImageReader;

namespace zenvor {

/// QImageReader's name for what the bytes are, empty for what is not taken. The reader could find out as
/// well, but it asks every plugin for that, the application's too: those for vector pictures and documents
/// reach other files and have no size of their own, some take any text for theirs, and PNG's expands texts
/// before it answers.
QByteArray imageFormat(QByteArrayView data);

/// Whether a reader may look at the header of a picture in this format at all.
bool isHeaderAffordable(QByteArrayView data, QByteArrayView format);

/// The size of the picture that the reader would make, or an empty one.
QSize claimedSize(QByteArrayView data, const QImageReader &reader);

/// The size in which the decoder makes a picture of \a size that is asked for in the size \a target.
QSize sizeAsDecoded(QByteArrayView data, const QImageReader &reader, QSize size, QSize target);

/// Whether decoding stays within half a gigabyte and a few seconds.
bool isAffordable(QByteArrayView data, const QImageReader &reader, QSize size, QSize asDecoded);

} // namespace zenvor
