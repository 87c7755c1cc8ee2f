#include "encoder/documentwriter_p.h"

#include <algorithm>

#include "encoder/drawncodes_p.h"
#include "encoder/linedots_p.h"
#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

constexpr unsigned styleBits =
    CharBold | CharItalic | CharMarkZ | CharUnderline | CharDoubleWidth | CharDoubleHeight;

// Printable characters of ASCII, by which own ones are called.
constexpr int firstOwnCode = 0x20;
constexpr int mostOwnCodes = 0x7F - firstOwnCode;

/// What of a character makes a difference to TextStyle.
int styleKeyOf(const PrintLayout::Cell &cell)
{
    return int((cell.format & styleBits) << 8 | cell.font);
}

const PrintLayout::Cell *cellsOf(const PrintLayout &layout, const PrintLayout::Row &row)
{
    return layout.cells.data() + row.first;
}

}  // namespace

int dotsOfUnits(int units, int unitsPerInch, int dotsPerInch)
{
    return qRound(double(units) * dotsPerInch / unitsPerInch);
}

int unitsOf(int dots, int unitsPerInch, int dotsPerInch)
{
    const int near = qRound(double(dots) * unitsPerInch / dotsPerInch);
    for (const int units : {near, near - 1, near + 1}) {
        if (units >= 0 && dotsOfUnits(units, unitsPerInch, dotsPerInch) == dots)
            return units;
    }
    return near;
}

std::unique_ptr<DocumentWriter> DocumentWriter::of(const PrintTarget &target,
                                                   const PrintOptions &options,
                                                   EncodedDocument &document)
{
    switch (target.profile().dialect()) {
        case Dialect::EscPos:
            break;
        case Dialect::StarLine:
            return starLineWriter(target, options, document);
        case Dialect::Swecoin:
            return swecoinWriter(target, options, document);
    }
    return escPosWriter(target, options, document);
}

DocumentWriter::DocumentWriter(const PrintTarget &target, const PrintOptions &options,
                               EncodedDocument &document)
    : m_target(target),
      m_options(options),
      m_document(document),
      m_commands(target.profile(), document.bytes),
      m_pages(PageTable::of(target.profile())),
      m_rules(hazards::rulesOf(target.profile())),
      m_firstPage(PageTable::firstPage(target.profile(), options.codePage, options.codec)),
      m_own(size_t(std::clamp(target.profile().ownCharacters(), 0, mostOwnCodes)), -1)
{
    if (m_firstPage < 0)
        m_firstPage = target.profile().initialCodePage();
    m_page = m_firstPage;
}

void DocumentWriter::setPlain(int font)
{
    m_style = TextStyle();
    m_style.font = font;
}

void DocumentWriter::note(const QString &text, bool isLoss)
{
    PrintNote note;
    note.block = m_block;
    note.line = m_line;
    note.text = text;
    note.isLoss = isLoss;
    m_document.notes.append(note);
}

int DocumentWriter::pulseUnits(int milliseconds, int unit, int least, int most)
{
    if (milliseconds > unit * most)
        note(QStringLiteral("a pulse of the model's drawers takes %1 ms at most").arg(unit * most),
             false);
    return std::clamp((std::min(milliseconds, unit * most) + unit - 1) / unit, least, most);
}

void DocumentWriter::put(char byte)
{
    if (m_runSize == int(m_run.size()))
        flush();
    m_run[size_t(m_runSize++)] = byte;
}

void DocumentWriter::flush()
{
    if (m_runSize > 0)
        m_commands.putText(m_run.data(), m_runSize);
    m_runSize = 0;
}

void DocumentWriter::applyStyle(const PrintLayout::Cell &cell)
{
    const int key = styleKeyOf(cell);
    if (key == m_styleKey)
        return;
    flush();
    const unsigned bits = cell.format & styleBits;
    m_styleKey = key;
    const PrintFont &font = m_target.font(cell.font);
    TextStyle style;
    style.font = font.number;
    style.widthScale = font.widthScale * ((bits & CharDoubleWidth) != 0 ? 2 : 1);
    style.heightScale = font.heightScale * ((bits & CharDoubleHeight) != 0 ? 2 : 1);
    style.isBold = (bits & CharBold) != 0;
    style.isItalic = (bits & CharItalic) != 0;
    style.isUnderlined = (bits & CharUnderline) != 0;
    style.isInverse = (bits & CharMarkZ) != 0;
    chooseStyle(style);
    m_style = style;
}

void DocumentWriter::setOwn(bool isOwn)
{
    if (isOwn == m_isOwn)
        return;
    flush();
    chooseOwn(isOwn);
    m_isOwn = isOwn;
}

void DocumentWriter::setPage(int page)
{
    if (page == m_page)
        return;
    flush();
    choosePage(page);
    m_page = page;
    m_known = {};
}

/// A byte as it stands; codes below 0x20 behind a blank, so that they make no command with what
/// stands before them.
void DocumentWriter::putRaw(const PrintLayout::Cell &cell)
{
    const char byte = static_cast<char>(cell.byte);
    if (cell.byte < 0x20) {
        put(' ');
        if (m_options.allowedRawCodes.contains(byte))
            put(byte);
        return;
    }
    if (cell.byte >= 0x80)
        setPage(m_firstPage);
    put(cell.byte == 0x7F ? ' ' : byte);
}

/// Control characters are on no page, so they are blank.
char DocumentWriter::byteOnSomePage(const PrintLayout &layout, const PrintLayout::Row &row,
                                    int index)
{
    const PrintLayout::Cell *const cells = cellsOf(layout, row);
    const char16_t character = cells[index].character;
    auto byte = m_pages->byteOn(m_page, character);
    if (!byte) {
        std::vector<char16_t> text;
        for (int i = index; i < row.count; ++i)
            text.push_back(cells[i].character);
        const int page = m_pages->pageFor(text.data(), int(text.size()), m_firstPage);
        if (page < 0)
            return ' ';
        setPage(page);
        byte = m_pages->byteOn(page, character);
    }
    return byte ? static_cast<char>(*byte) : ' ';
}

char DocumentWriter::byteOf(const PrintLayout &layout, const PrintLayout::Row &row, int index)
{
    const char16_t character = cellsOf(layout, row)[index].character;
    if (character >= m_known.size())
        return byteOnSomePage(layout, row, index);
    if (m_known[character] == 0) {
        const char byte = byteOnSomePage(layout, row, index);
        m_known[character] = byte;
    }
    return m_known[character];
}

/// The usual text: what looks like the character before, and was on this page already.
/// @return how many cells it was
int DocumentWriter::putKnown(const PrintLayout::Cell *cells, int count)
{
    if (m_isOwn || count == 0 || styleKeyOf(cells[0]) != m_styleKey)
        return 0;
    const quint8 format = cells[0].format;
    const quint8 font = cells[0].font;
    const bool isRaw = (format & CharRawCode) != 0;
    const int room = isRaw ? 0 : std::min(count, int(m_run.size()) - m_runSize);
    char *const run = m_run.data() + m_runSize;
    int size = 0;
    for (; size < room; ++size) {
        const PrintLayout::Cell &cell = cells[size];
        const char byte = cell.character < m_known.size() ? m_known[cell.character] : '\0';
        if (byte == 0 || cell.format != format || cell.font != font || cell.drawing >= 0)
            break;
        run[size] = byte;
    }
    m_runSize += size;
    return size;
}

void DocumentWriter::printText(const PrintLayout &layout, const PrintLayout::Row &row)
{
    const PrintLayout::Cell *const cells = cellsOf(layout, row);
    if (!layout.drawings.isEmpty() && std::any_of(cells, cells + row.count, [](const auto &cell) {
            return cell.drawing >= 0 && !cell.isDots;
        }))
        prepareOwn(layout, row);
    for (int i = 0; i < row.count; ++i) {
        i += putKnown(cells + i, row.count - i);
        if (i == row.count)
            break;
        const PrintLayout::Cell &cell = cells[i];
        if (cell.isDots) {
            i = printLineDots(layout, row, i) - 1;
            continue;
        }
        applyStyle(cell);
        const int slot = cell.drawing >= 0 ? slotOf(ownKey(cell)) : -1;
        setOwn(slot >= 0);
        if (slot >= 0)
            put(static_cast<char>(firstOwnCode + slot));
        else if (cell.drawing >= 0)
            put(' ');
        else if ((cell.format & CharRawCode) == 0)
            put(byteOf(layout, row, i));
        else
            putRaw(cell);
    }
    flush();
    endLine(row.height, row.height + row.feed - m_borrowed, row.count == 0);
    m_borrowed = 0;
}

/// The dots have their look in them. By the manuals that of characters doesn't touch them, but not
/// each printer keeps to that.
/// @return the cell behind them
int DocumentWriter::printLineDots(const PrintLayout &layout, const PrintLayout::Row &row, int first)
{
    PrintLayout::Cell look = cellsOf(layout, row)[first];
    look.format &= CharDoubleWidth | CharDoubleHeight;
    applyStyle(look);
    flush();
    const linedots::Run run = linedots::runFrom(layout, row, first);
    int column = 0;
    for (const int count : run.parts) {
        printColumns(run.columns, column, count);
        column += count;
    }
    return run.end;
}

qint64 DocumentWriter::ownKey(const PrintLayout::Cell &cell) const
{
    return qint64(m_target.font(cell.font).number) << 16 | cell.drawing;
}

int DocumentWriter::slotOf(qint64 key) const
{
    const auto slot = std::find(m_own.begin(), m_own.end(), key);
    return slot == m_own.end() ? -1 : int(slot - m_own.begin());
}

/// Defines what a row needs in the place of what it doesn't.
void DocumentWriter::prepareOwn(const PrintLayout &layout, const PrintLayout::Row &row)
{
    const PrintLayout::Cell *const cells = cellsOf(layout, row);
    std::vector<bool> isNeeded(m_own.size(), false);
    std::vector<const PrintLayout::Cell *> missing;
    std::vector<qint64> missingKeys;
    for (int i = 0; i < row.count; ++i) {
        if (cells[i].drawing < 0 || cells[i].isDots)
            continue;
        const qint64 key = ownKey(cells[i]);
        const int slot = slotOf(key);
        if (slot >= 0) {
            isNeeded[size_t(slot)] = true;
        } else if (std::find(missingKeys.begin(), missingKeys.end(), key) == missingKeys.end()) {
            missing.push_back(&cells[i]);
            missingKeys.push_back(key);
        }
    }
    size_t place = 0;
    for (size_t i = 0; i < missing.size(); ++i) {
        const bool isFreeFirst = std::find(m_own.begin(), m_own.end(), -1) != m_own.end();
        place = 0;
        while (place < m_own.size() && (isNeeded[place] || (isFreeFirst && m_own[place] != -1)))
            ++place;
        if (place == m_own.size()) {
            note(
                QStringLiteral("the model takes no more than %1 characters of its user's at a time")
                    .arg(m_own.size()));
            return;
        }
        isNeeded[place] = true;
        define(layout, *missing[i], missingKeys[i], int(place));
    }
}

void DocumentWriter::define(const PrintLayout &layout, const PrintLayout::Cell &cell, qint64 key,
                            int slot)
{
    const Paper::Picture &drawing = layout.drawings.at(cell.drawing);
    if (!hazards::isDefinable(drawing, profile())) {
        note(QStringLiteral("the dots of a character would be a command to the printer"));
        return;
    }
    applyStyle(cell);  // a definition belongs to its font
    defineOwn(firstOwnCode + slot, drawing);
    m_own[size_t(slot)] = key;
}

void DocumentWriter::printPicture(const Paper::Picture &picture, int left, int room)
{
    const PrintDots dots = placedDots(picture, left);
    const bool isBlank = dots.bytesPerRow == 0;
    const bool hasCommand = profile().rasterCommand() != RasterCommand::None;
    if (!isBlank && !hasCommand)
        note(QStringLiteral("the model prints no pictures"));
    if (isBlank || !hasCommand)
        feed(dots.height);
    else
        m_borrowed += printDots(dots, room) - dots.height;
}

void DocumentWriter::printCode(const Paper::Code &code, int left, int room)
{
    if (isDrawnByPrinter(profile(), code))
        printDrawn(code, left);
    else
        printPicture(pictureOfCode(code), left, room);
}

void DocumentWriter::feed(int dots)
{
    const int borrowed = std::min(dots, m_borrowed);
    m_borrowed -= borrowed;
    if (dots > borrowed)
        feedDots(dots - borrowed);
}

}  // namespace printerslib::drivers
