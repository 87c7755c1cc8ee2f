#pragma once

#include <QtGlobal>

// Rows of one bit per pixel, for what makes and reads bitmaps.

namespace documents {

constexpr int bitsPerByte = 8;

/// Bytes of a row that isn't aligned to more than a byte.
constexpr qint64 bytesOfRow(qint64 width)
{
    return (width + bitsPerByte - 1) / bitsPerByte;
}

/// The pixel's bit in its byte: the leftmost is the most significant one.
constexpr uint bitOfPixel(int x)
{
    return 0x80U >> static_cast<uint>(x % bitsPerByte);
}

}  // namespace documents
