#include "encoder/glyphs_p.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <iterator>
#include <mutex>
#include <vector>

namespace printerslib::drivers::glyphs {

namespace {

constexpr size_t cellCount = std::size(cells);

// The first drawing of each cell stands for the characters that have none.
constexpr int boxIndex = 0;

/// Characters that follow each other, and so do their drawings.
struct Run
{
    char16_t first = 0;
    int count = 0;
    int index = 0;  ///< of the first one's drawing
};

QByteArray read(const QString &name)
{
    QFile file(QStringLiteral(":/printerslib/drivers/glyphs/%1").arg(name));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

std::vector<Run> readRuns()
{
    const QByteArray bytes = read(QStringLiteral("characters"));
    const auto wordAt = [&bytes](int at) {
        return static_cast<unsigned char>(bytes.at(at)) |
               static_cast<unsigned char>(bytes.at(at + 1)) << 8;
    };
    std::vector<Run> runs;
    int index = boxIndex + 1;
    for (int at = 0; at + 4 <= bytes.size(); at += 4) {
        const Run run = {char16_t(wordAt(at)), wordAt(at + 2), index};
        runs.push_back(run);
        index += run.count;
    }
    return runs;
}

/// 0 for a character that has no drawing.
int indexOf(char16_t character)
{
    static const std::vector<Run> &runs = *new std::vector<Run>(readRuns());
    auto run = std::upper_bound(
        runs.begin(), runs.end(), character,
        [](char16_t code, const Run &candidate) { return code < candidate.first; });
    if (run == runs.begin())
        return boxIndex;
    --run;
    const int behind = character - run->first;
    return behind < run->count ? run->index + behind : boxIndex;
}

int bytesPerRow(int width)
{
    return (width + 7) / 8;
}

/// All drawings of a cell, unpacked at their first use.
const unsigned char *drawingsOf(size_t cell)
{
    struct Drawings
    {
        std::once_flag isRead;
        QByteArray bytes;
    };
    // Not destroyed at the end, as threads may draw till then.
    static auto &all = *new std::array<Drawings, cellCount>;
    Drawings &drawings = all.at(cell);
    std::call_once(drawings.isRead, [&drawings, cell] {
        const QSize size = cells[cell];
        drawings.bytes = read(QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
    });
    return reinterpret_cast<const unsigned char *>(drawings.bytes.constData());
}

Drawing drawingAt(size_t cell, char16_t character)
{
    const QSize size = cells[cell];
    return {drawingsOf(cell) +
                ptrdiff_t(indexOf(character)) * bytesPerRow(size.width()) * size.height(),
            size};
}

bool isSet(const Drawing &drawing, int x, int y)
{
    const int byte = drawing.rows[y * bytesPerRow(drawing.size.width()) + x / 8];
    return (byte >> (7 - x % 8) & 1) != 0;
}

Paper::Picture blankPicture(QSize size)
{
    Paper::Picture picture;
    picture.size = size;
    picture.rows = QByteArray(bytesPerRow(size.width()) * size.height(), 0);
    return picture;
}

void burn(Paper::Picture &picture, int x, int y)
{
    char &byte = picture.rows.data()[y * bytesPerRow(picture.size.width()) + x / 8];
    byte = char(static_cast<unsigned char>(byte) | 0x80U >> (x % 8));
}

/// What is drawn for a cell that nobody foresaw.
struct Nearest
{
    size_t cell = 0;
    int times = 0;  ///< 0: even the smallest doesn't fit
};

Nearest nearestTo(QSize wanted)
{
    Nearest nearest;
    int most = 0;
    for (size_t cell = 0; cell < cellCount; ++cell) {
        const QSize size = cells[cell];
        const int times = std::min(wanted.width() / size.width(), wanted.height() / size.height());
        const int dots = size.width() * size.height() * times * times;
        // The more dots it has itself, the better it looks.
        if (dots > 0 && dots >= most) {
            most = dots;
            nearest = {cell, times};
        }
    }
    return nearest;
}

Paper::Picture enlarged(const Drawing &drawing, int times, QSize cell)
{
    Paper::Picture picture = blankPicture(cell);
    const QSize shown = drawing.size * times;
    const int left = (cell.width() - shown.width()) / 2;
    const int top = (cell.height() - shown.height()) / 2;
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            if (isSet(drawing, x / times, y / times))
                burn(picture, left + x, top + y);
        }
    }
    return picture;
}

/// No stroke is lost, as each dot burns where it comes to lie.
Paper::Picture reduced(const Drawing &drawing, QSize cell)
{
    Paper::Picture picture = blankPicture(cell);
    const QSize size = drawing.size;
    const auto scaled = [](int at, int from, int to) { return to < from ? at * to / from : at; };
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            if (isSet(drawing, x, y))
                burn(picture, scaled(x, size.width(), cell.width()),
                     scaled(y, size.height(), cell.height()));
        }
    }
    return picture;
}

}  // namespace

bool has(char16_t character)
{
    return indexOf(character) != boxIndex;
}

Drawing drawingOf(char16_t character, QSize cell)
{
    const auto *const foreseen = std::find(std::begin(cells), std::end(cells), cell);
    if (foreseen == std::end(cells))
        return {};
    return drawingAt(size_t(foreseen - std::begin(cells)), character);
}

Paper::Picture of(char16_t character, QSize cell)
{
    if (cell.isEmpty())
        return {};
    const Drawing foreseen = drawingOf(character, cell);
    if (foreseen.rows != nullptr) {
        Paper::Picture picture = blankPicture(cell);
        std::copy_n(foreseen.rows, picture.rows.size(), picture.rows.begin());
        return picture;
    }
    const Nearest nearest = nearestTo(cell);
    const Drawing drawing = drawingAt(nearest.cell, character);
    return nearest.times > 0 ? enlarged(drawing, nearest.times, cell) : reduced(drawing, cell);
}

}  // namespace printerslib::drivers::glyphs
