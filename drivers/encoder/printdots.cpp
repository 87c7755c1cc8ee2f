#include "encoder/printdots_p.h"

#include <algorithm>

namespace printerslib::drivers {

namespace {

constexpr int bitsPerByte = 8;

int bytesFor(int dots)
{
    return (dots + bitsPerByte - 1) / bitsPerByte;
}

bool isBlack(const unsigned char *row, int x)
{
    return (row[x / bitsPerByte] & (0x80 >> (x % bitsPerByte))) != 0;
}

/// Bytes up to the last one with a black dot.
int usedBytes(const PrintDots &dots)
{
    int used = 0;
    for (int y = 0; y < dots.height; ++y) {
        const unsigned char *const row = dots.row(y);
        int bytes = dots.bytesPerRow;
        while (bytes > used && row[bytes - 1] == 0)
            --bytes;
        used = std::max(used, bytes);
    }
    return used;
}

void crop(PrintDots &dots, int bytesPerRow)
{
    if (bytesPerRow == dots.bytesPerRow)
        return;
    QByteArray rows;
    rows.reserve(bytesPerRow * dots.height);
    for (int y = 0; y < dots.height; ++y)
        rows.append(dots.rows.constData() + qptrdiff(y) * dots.bytesPerRow, bytesPerRow);
    dots.rows = rows;
    dots.bytesPerRow = bytesPerRow;
}

}  // namespace

PrintDots placedDots(const Paper::Picture &picture, int left)
{
    PrintDots dots;
    const int width = picture.size.width();
    const int sourceBytes = bytesFor(width);
    dots.height = picture.size.height();
    dots.bytesPerRow = bytesFor(left + width);
    dots.rows = QByteArray(dots.bytesPerRow * dots.height, '\0');
    const int shift = left % bitsPerByte;
    const int first = left / bitsPerByte;
    // Bits behind the last dot may be anything.
    const int lastMask = 0xFF << (sourceBytes * bitsPerByte - width);
    for (int y = 0; y < dots.height; ++y) {
        const auto *const from = reinterpret_cast<const unsigned char *>(picture.rows.constData()) +
                                 qptrdiff(y) * sourceBytes;
        char *const to = dots.rows.data() + qptrdiff(y) * dots.bytesPerRow + first;
        for (int i = 0; i < sourceBytes; ++i) {
            const int byte = i + 1 < sourceBytes ? from[i] : from[i] & lastMask;
            to[i] = static_cast<char>(to[i] | (byte >> shift));
            if (shift > 0 && first + i + 1 < dots.bytesPerRow)
                to[i + 1] = static_cast<char>(byte << (bitsPerByte - shift));
        }
    }
    crop(dots, usedBytes(dots));
    return dots;
}

Paper::Picture pictureOfCode(const Paper::Code &code)
{
    Paper::Picture picture;
    picture.size = {code.modules.width() * code.module.width(),
                    code.modules.height() * code.module.height()};
    const int bytesPerRow = bytesFor(picture.size.width());
    const int moduleBytes = bytesFor(code.modules.width());
    picture.rows.reserve(bytesPerRow * picture.size.height());
    for (int y = 0; y < code.modules.height(); ++y) {
        QByteArray row(bytesPerRow, '\0');
        const auto *const modules = reinterpret_cast<const unsigned char *>(code.rows.constData()) +
                                    qptrdiff(y) * moduleBytes;
        for (int x = 0; x < picture.size.width(); ++x) {
            char &byte = row.data()[x / bitsPerByte];
            if (isBlack(modules, x / code.module.width()))
                byte = static_cast<char>(byte | (0x80 >> (x % bitsPerByte)));
        }
        for (int i = 0; i < code.module.height(); ++i)
            picture.rows += row;
    }
    return picture;
}

QByteArray columnsOf24(const PrintDots &dots, int top)
{
    constexpr int bytesPerColumn = 3;
    const int columns = bitsPerByte * dots.bytesPerRow;
    QByteArray data(bytesPerColumn * columns, '\0');
    char *const to = data.data();
    const int end = std::min(dots.height, top + bytesPerColumn * bitsPerByte);
    for (int y = top; y < end; ++y) {
        const unsigned char *const row = dots.row(y);
        const int part = (y - top) / bitsPerByte;
        const int bit = 0x80 >> ((y - top) % bitsPerByte);
        for (int x = 0; x < columns; ++x) {
            char &byte = to[bytesPerColumn * x + part];
            if (isBlack(row, x))
                byte = static_cast<char>(byte | bit);
        }
    }
    return data;
}

}  // namespace printerslib::drivers
