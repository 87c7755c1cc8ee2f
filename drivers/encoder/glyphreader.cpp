#include "printerslib/drivers/glyphreader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <mutex>
#include <tuple>
#include <vector>

#include "encoder/glyphs_p.h"
#include "encoder/pagetable_p.h"

namespace printerslib::drivers {

namespace {

constexpr int bitsOfGlyphByte = 8;

struct Letter
{
    const unsigned char *rows = nullptr;
    char16_t character = 0;
};

/// In the order of their drawings; of the same drawing the likeliest first.
using Letters = std::vector<Letter>;

int bytesOf(QSize size)
{
    return (size.width() + bitsOfGlyphByte - 1) / bitsOfGlyphByte * size.height();
}

/// The smaller the likelier is a character to be defined in a printer.
int rankOf(char16_t character)
{
    constexpr char16_t firstCyrillic = 0x0400;
    constexpr char16_t lastCyrillic = 0x052F;
    constexpr char16_t delCode = 0x7F;
    if (character >= firstCyrillic && character <= lastCyrillic)
        return 0;
    return character > delCode ? 1 : 2;
}

Letters sortedLetters(QSize cell)
{
    Letters letters;
    for (int code = 0x21; code <= 0xFFFF; ++code) {
        const auto character = static_cast<char16_t>(code);
        if (glyphs::has(character))
            letters.push_back({glyphs::drawingOf(character, cell).rows, character});
    }
    const auto size = static_cast<size_t>(bytesOf(cell));
    std::sort(letters.begin(), letters.end(), [size](const Letter &a, const Letter &b) {
        const int order = std::memcmp(a.rows, b.rows, size);
        return std::make_tuple(order, rankOf(a.character), a.character) <
               std::make_tuple(0, rankOf(b.character), b.character);
    });
    return letters;
}

/// Null for a cell that glyphs aren't drawn for.
const Letters *lettersOf(QSize cell)
{
    struct Table
    {
        std::once_flag isMade;
        Letters letters;
    };
    const auto *const known = std::find(std::begin(glyphs::cells), std::end(glyphs::cells), cell);
    if (known == std::end(glyphs::cells))
        return nullptr;
    // Not destroyed at the end, as threads may read till then.
    static auto &tables = *new std::array<Table, std::size(glyphs::cells)>;
    Table &table = tables.at(static_cast<size_t>(known - std::begin(glyphs::cells)));
    std::call_once(table.isMade, [&table, cell] { table.letters = sortedLetters(cell); });
    return &table.letters;
}

/// The rows of a drawing in a field of another size, without what may stand beyond its last dots.
QByteArray rowsIn(QSize field, const Paper::Picture &drawing)
{
    const int fieldBytes = bytesOf({field.width(), 1});
    const int drawnBytes = bytesOf({drawing.size.width(), 1});
    QByteArray rows(bytesOf(field), '\0');
    for (int y = 0; y < std::min(drawing.size.height(), field.height()); ++y) {
        char *const to = rows.data() + ptrdiff_t(y) * fieldBytes;
        std::copy_n(drawing.rows.constData() + ptrdiff_t(y) * drawnBytes,
                    std::min(drawnBytes, fieldBytes), to);
        const int width = std::min(drawing.size.width(), field.width());
        if (width % bitsOfGlyphByte != 0)
            to[width / bitsOfGlyphByte] = static_cast<char>(to[width / bitsOfGlyphByte] &
                                                            (0xFF00 >> width % bitsOfGlyphByte));
    }
    return rows;
}

/// The letter of a drawing in a cell, 0 if there is none.
char16_t letterIn(QSize cell, const Paper::Picture &drawing, const PageTable &pages)
{
    const Letters *const letters = lettersOf(cell);
    if (letters == nullptr)
        return 0;
    const QByteArray rows = rowsIn(cell, drawing);
    const auto size = static_cast<size_t>(rows.size());
    const char *const wanted = rows.constData();
    auto letter = std::lower_bound(letters->begin(), letters->end(), wanted,
                                   [size](const Letter &candidate, const char *dots) {
                                       return std::memcmp(candidate.rows, dots, size) < 0;
                                   });
    const char16_t likeliest = letter == letters->end() ? u'\0' : letter->character;
    bool isAny = false;
    for (; letter != letters->end() && std::memcmp(letter->rows, wanted, size) == 0; ++letter) {
        isAny = true;
        if (!pages.has(letter->character))
            return letter->character;
    }
    return isAny ? likeliest : u'\0';
}

}  // namespace

GlyphReader::GlyphReader(const PrinterProfile &profile) : m_pages(PageTable::of(profile)) {}

GlyphReader::~GlyphReader() = default;

char16_t GlyphReader::letterOf(const Paper::Picture &drawing, QSize cell) const
{
    constexpr QSize largest(0x1000, 0x1000);  // more than any command takes
    const QSize size = drawing.size.expandedTo({0, 0});
    if (size.boundedTo(largest) != size || drawing.rows.size() < bytesOf(size))
        return 0;
    const QByteArray rows = rowsIn(size, drawing);
    if (rows.count('\0') == rows.size())
        return u' ';
    const char16_t letter = letterIn(drawing.size, drawing, *m_pages);
    // Columns without dots at its right may have been left out.
    const bool isWithin = drawing.size.boundedTo(cell) == drawing.size;
    return letter != 0 || !isWithin ? letter : letterIn(cell, drawing, *m_pages);
}

}  // namespace printerslib::drivers
