#pragma once

#include "sandbox/http_headers.h"

namespace zenvor::sandbox {

/// The part of a file that a request asks for.
struct ByteRange
{
    enum class Kind {
        Whole, ///< no part, or something that may be ignored: several parts, another unit, no sense
        Part,
        OutOfReach ///< begins behind the end of the file
    };
    Kind kind = Kind::Whole;
    qint64 first = 0;
    qint64 last = 0; ///< inclusive, always within the file
};

/// Reads the Range header for a file of \a size bytes. Pure.
ByteRange readRange(const Headers &headers, qint64 size);

} // namespace zenvor::sandbox
