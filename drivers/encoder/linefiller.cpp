#include "encoder/linefiller_p.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <type_traits>

#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

constexpr int mostSpacesInFront = 16;
constexpr char16_t lastPlain = 0x7E;
constexpr char16_t deletion = 0x7F;
constexpr char16_t lastOfByte = 0xFF;
constexpr quint8 knownFormats =
    CharBold | CharItalic | CharMarkZ | CharUnderline | CharDoubleWidth | CharDoubleHeight;

bool isPair(const QString &text, int first)
{
    return first + 1 < text.size() && text.at(first).isHighSurrogate() &&
           text.at(first + 1).isLowSurrogate();
}

bool hasOneValue(const QByteArray &bytes)
{
    const int size = bytes.size();
    return size < 2 || std::memcmp(bytes.constData(), bytes.constData() + 1, size_t(size - 1)) == 0;
}

/// Cells that look alike, with one character after the other. A document has many of them: each is
/// made as a number, so that it is written at once.
class CellIterator
{
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = PrintLayout::Cell;
    using difference_type = std::ptrdiff_t;
    using pointer = const value_type *;
    using reference = value_type;

    CellIterator(PrintLayout::Cell cell, const char16_t *character) : m_character(character)
    {
        cell.character = 0;
        std::memcpy(&m_look, &cell, sizeof m_look);
    }

    PrintLayout::Cell operator*() const
    {
        static_assert(sizeof(PrintLayout::Cell) == sizeof(quint64));
        static_assert(std::is_trivially_copyable_v<PrintLayout::Cell>);
        static_assert(offsetof(PrintLayout::Cell, character) == 0);
        constexpr int place = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? 0 : 48;
        const quint64 number = m_look | quint64(*m_character) << place;
        PrintLayout::Cell cell;
        std::memcpy(static_cast<void *>(&cell), &number, sizeof cell);
        return cell;
    }
    CellIterator &operator++()
    {
        ++m_character;
        return *this;
    }
    bool operator==(const CellIterator &other) const { return m_character == other.m_character; }
    bool operator!=(const CellIterator &other) const { return m_character != other.m_character; }

private:
    quint64 m_look = 0;
    const char16_t *m_character;
};

/// Written so that a compiler looks at many of them at once.
bool hasOthersThanPlain(const char16_t *characters, int count)
{
    quint16 others = 0;
    for (int i = 0; i < count; ++i) {
        const auto above = static_cast<quint16>(characters[i] - LineFiller::firstPrinting);
        others |= static_cast<quint16>(above > lastPlain - LineFiller::firstPrinting ? 1 : 0);
    }
    return others != 0;
}

}  // namespace

LineFiller::Line::Line(const QString &lineText, const QByteArray &formats, const QByteArray &fonts,
                       ETextAlignment lineAlignment)
    : text(lineText),
      format(formats),
      font(fonts),
      alignment(lineAlignment),
      isUniform(hasOneValue(formats) && hasOneValue(fonts))
{}

LineFiller::LineFiller(const PrintTarget &target, const QByteArray &allowedRawCodes,
                       int spacesInFront)
    : m_target(target),
      m_allowedRawCodes(allowedRawCodes),
      m_printed(target.printedFormats()),
      m_spaces(qBound(0, spacesInFront, mostSpacesInFront))
{
    const int blank = std::max(1, target.font(0).cell.width());
    // On a line that is hardly wider than they are, text comes first.
    m_spaces = std::min(m_spaces, std::max(0, target.lineDots() / blank - 1));
    m_width = target.lineDots() - m_spaces * blank;
}

void LineFiller::fill(const Line &line, int mostRows, std::vector<Cell> &cells,
                      std::vector<RowEnd> &rows)
{
    m_cells = &cells;
    m_rows = &rows;
    m_mostRows = mostRows;
    m_unprintedFormats = 0;
    m_firstFont = static_cast<quint8>(line.font.at(0));
    beginRow();
    int tabCells = 0;
    if (line.alignment != AlignLeft && !line.text.isEmpty()) {
        const int room = freeCells(line, std::max(1, sizeOf(0, m_firstFont).width()));
        if (line.alignment == AlignRight)
            addBlanks(room, 0, m_firstFont);
        else if (line.alignment == AlignCenter)
            addBlanks(room / 2, 0, m_firstFont);
        else if (line.alignment == AlignJustify)
            tabCells = room;
    }
    for (int i = 0; i < line.text.size() && !isFull();) {
        const Run run = runFrom(line, i);
        fillRun(line, run, tabCells);
        i = run.end;
    }
    if (!isFull())
        endRow();
}

/// The halves of a character of two keep together, and look like the first.
LineFiller::Run LineFiller::runFrom(const Line &line, int first) const
{
    Run run;
    run.first = first;
    const char format = line.format.at(first);
    const char font = line.font.at(first);
    const int size = line.text.size();
    int end = size;
    if (!line.isUniform) {
        end = first + 1;
        while (end < size && line.format.at(end) == format && line.font.at(end) == font)
            ++end;
        end += isPair(line.text, end - 1) ? 1 : 0;
    }
    run.end = end;
    const auto bits = static_cast<quint8>(format);
    run.isRaw = (bits & CharRawCode) != 0;
    run.format = bits & knownFormats;
    run.font = static_cast<quint8>(font);
    run.cell = sizeOf(run.format, run.font);
    return run;
}

/// How many cells of this width a line leaves free; none if it fills the row or overflows it.
int LineFiller::freeCells(const Line &line, int unit) const
{
    int used = 0;
    for (int i = 0; i < line.text.size();) {
        const Run run = runFrom(line, i);
        const int room = m_width - used;
        const int width = std::max(1, run.cell.width());
        if (run.end - i > room / width)
            return 0;
        used += (run.end - i) * width;
        i = run.end;
    }
    return (m_width - used) / unit;
}

void LineFiller::fillRun(const Line &line, const Run &run, int tabCells)
{
    m_unprintedFormats |= run.format & static_cast<quint8>(~m_printed);
    for (int i = run.first; i < run.end && !isFull();) {
        int end = run.end;
        if (tabCells > 0) {
            if (line.text.at(i) == QLatin1Char('\t')) {
                fillTab(run, tabCells);
                ++i;
                continue;
            }
            const int tab = line.text.indexOf(QLatin1Char('\t'), i);
            end = tab < 0 ? end : std::min(tab, end);
        }
        const int count = fitting(line, run, i, end);
        if (count == 0) {
            endRow();
            continue;
        }
        add(reinterpret_cast<const char16_t *>(line.text.utf16()) + i, count, run);
        i += count;
    }
}

/// A tab of a justified line takes its own place and all the free ones; a further tab makes the
/// line too long, as it does in the library's text form.
void LineFiller::fillTab(const Run &run, int tabCells)
{
    addBlanks(1, run.format & m_printed, run.font);
    addBlanks(tabCells, run.format & m_printed & static_cast<quint8>(~CharDoubleWidth),
              m_firstFont);
}

/// How many of these characters the row still takes. The first of a row always fits.
int LineFiller::fitting(const Line &line, const Run &run, int first, int end) const
{
    const int room = (m_width - m_next) / std::max(1, run.cell.width());
    const int least = m_isEmpty ? 1 : 0;
    const int count = std::min(std::max(room, least), end - first);
    const bool partsPair =
        count > least && count < end - first && isPair(line.text, first + count - 1);
    return partsPair ? count - 1 : count;
}

void LineFiller::add(const char16_t *characters, int count, const Run &run)
{
    beginCells();
    Cell cell;
    cell.format = run.format & m_printed;
    cell.font = run.font;
    m_cells->insert(m_cells->end(), CellIterator(cell, characters),
                    CellIterator(cell, characters + count));
    const bool isOdd = hasOthersThanPlain(characters, count);
    const bool hasCodes =
        run.isRaw || (isOdd && std::any_of(characters, characters + count, [](char16_t character) {
                          return !isPlain(character) && character <= lastControl;
                      }));
    Cell *const added = m_cells->data() + m_cells->size() - count;
    for (int i = 0; i < count && hasCodes; ++i)
        setCharacter(added[i], run.isRaw);
    m_isOdd |= isOdd;
    m_next += count * run.cell.width();
    m_height = std::max(m_height, run.cell.height());
}

void LineFiller::addBlanks(int count, quint8 format, quint8 font)
{
    const QSize size = sizeOf(format, font);
    Cell cell;
    cell.format = format;
    cell.font = font;
    for (int i = 0; i < count && !isFull(); ++i) {
        if (!m_isEmpty && m_next + size.width() > m_width)
            endRow();
        beginCells();
        m_cells->push_back(cell);
        m_next += size.width();
        m_height = std::max(m_height, size.height());
    }
}

/// Nothing that a printer might take for a command goes through, unless it is allowed.
void LineFiller::setCharacter(Cell &cell, bool isRaw) const
{
    const char16_t character = cell.character;
    const bool isSymbol =
        !isRaw && character >= documents::firstSymbol && character <= documents::lastSymbol;
    const bool isControl = character < firstPrinting || character == deletion;
    const bool isAllowed = isRaw && character < firstPrinting &&
                           m_allowedRawCodes.contains(static_cast<char>(character));
    const bool isByte = isRaw && character > deletion && character <= lastOfByte;
    if (isPlain(character) || isSymbol || (character > lastControl && !isByte))
        return;
    if (isControl || !isByte)
        cell.character = u' ';
    if (character == u'\t' && !isAllowed)
        return;
    cell.byte = static_cast<quint8>(character);
    if (isAllowed || isByte)
        cell.format |= CharRawCode;
    else
        cell.drawing = unprintedCode;
}

void LineFiller::beginRow()
{
    m_next = 0;
    m_height = 0;
    m_isEmpty = true;
    m_isOdd = false;
}

/// Spaces in front are those of rows that have something in them.
void LineFiller::beginCells()
{
    if (!m_isEmpty)
        return;
    m_isEmpty = false;
    m_cells->insert(m_cells->end(), static_cast<size_t>(m_spaces), Cell());
    if (m_spaces > 0)
        m_height = sizeOf(0, 0).height();
}

void LineFiller::endRow()
{
    RowEnd row;
    row.end = static_cast<int>(m_cells->size());
    row.height = m_isEmpty ? sizeOf(0, m_firstFont).height() : m_height;
    row.isOdd = m_isOdd;
    m_rows->push_back(row);
    beginRow();
}

QSize LineFiller::sizeOf(quint8 format, quint8 font) const
{
    const QSize cell = m_target.font(font).cell;
    const auto printed = static_cast<quint8>(format & m_printed);
    return {cell.width() * ((printed & CharDoubleWidth) != 0 ? 2 : 1),
            cell.height() * ((printed & CharDoubleHeight) != 0 ? 2 : 1)};
}

}  // namespace printerslib::drivers
