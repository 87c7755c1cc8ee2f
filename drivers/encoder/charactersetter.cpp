#include "encoder/charactersetter_p.h"

#include <algorithm>

#include "encoder/glyphs_p.h"
#include "encoder/hazards_p.h"
#include "encoder/linedots_p.h"
#include "encoder/linefiller_p.h"
#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

// Seen in place of characters beyond the Basic Multilingual Plane, which have no glyphs.
constexpr char16_t boxCharacter = 0x25A1;
constexpr char16_t lastOfAscii = 0x7E;
constexpr int bitsOfSymbolRows = 8;
// The number of a drawing is of 16 bits; a row takes no more new ones than it has cells.
constexpr int mostDrawings = 30'000;

enum NoteKind { ControlCode, FreeByte, UnsentCode, NoLetter, NoGlyph };

QString codeText(int code)
{
    return QStringLiteral("%1 (0x%2)")
        .arg(code)
        .arg(QString::number(code, 16).toUpper().rightJustified(2, QLatin1Char('0')));
}

QString characterText(uint character)
{
    const QString number =
        QString::number(character, 16).toUpper().rightJustified(4, QLatin1Char('0'));
    return QChar::isSurrogate(character)
               ? QStringLiteral("U+%1").arg(number)
               : QStringLiteral("\"%1\" (U+%2)").arg(QString::fromUcs4(&character, 1), number);
}

}  // namespace

CharacterSetter::CharacterSetter(LayoutSheet &sheet, const TextPrinterDocument &document,
                                 const PrintOptions &options)
    : m_sheet(sheet),
      m_pages(PageTable::of(sheet.profile())),
      m_isPicture(options.isPicture && sheet.hasRaster())
{
    static_cast<QMultiMap<signed char, MonochromeImage> &>(m_symbols) = document.charImages();
    m_isEachRowOdd = m_isPicture;
    // Some pages have something else in places of ASCII.
    for (char16_t character = LineFiller::firstPrinting; character <= lastOfAscii; ++character)
        m_isEachRowOdd = m_isEachRowOdd || !m_pages->has(character);
}

void CharacterSetter::set(PrintLayout::Row &row)
{
    sift(row);
    row.isRaster = row.count > 0 && m_isPicture;
    if (!row.isRaster && !takesOwnCharacters()) {
        if (setLineDots(row))
            return;
        row.isRaster = m_sheet.hasRaster();
    }
    if (row.isRaster)
        setDots(row);
    else
        setOwnCharacters();
}

/// Settles all cells but those that the printer has no letters for, which are pending.
void CharacterSetter::sift(const PrintLayout::Row &row)
{
    m_pending.clear();
    Cell *const cells = m_sheet.layout().cells.data() + row.first;
    char16_t previous = 0;
    for (int i = 0; i < row.count; ++i) {
        const char16_t character = cells[i].character;
        const bool isLetter = cells[i].drawing < 0 &&
                              cells[i].drawing != LineFiller::unprintedCode &&
                              cells[i].format < CharRawCode && m_pages->has(character);
        if (isLetter) {
            previous = character;
            continue;
        }
        if (QChar::isSurrogate(character))
            setSurrogate(cells[i], previous, i + 1 < row.count ? cells[i + 1].character : u'\0');
        siftCell(cells[i]);
        previous = character;
    }
}

/// Takes the place of the whole character; its second half is blank.
void CharacterSetter::setSurrogate(Cell &cell, char16_t previous, char16_t next)
{
    const char16_t half = cell.character;
    const bool isSecond = QChar::isLowSurrogate(half) && QChar::isHighSurrogate(previous);
    cell.character = isSecond ? u' ' : boxCharacter;
    if (isSecond)
        return;
    const bool isPair = QChar::isHighSurrogate(half) && QChar::isLowSurrogate(next);
    noteWithoutGlyph(isPair ? QChar::surrogateToUcs4(half, next) : half);
}

void CharacterSetter::siftCell(Cell &cell)
{
    if (cell.drawing == LineFiller::unprintedCode)
        setUnprinted(cell);
    else if ((cell.format & CharRawCode) != 0)
        setByte(cell);
    else if (isSymbol(cell) || !m_pages->has(cell.character))
        m_pending.push_back(&cell);
}

void CharacterSetter::setUnprinted(Cell &cell)
{
    const int code = cell.byte;
    cell.drawing = -1;
    cell.byte = 0;
    m_sheet.notes().addOnce(ControlCode, uint(code), [code] {
        return QStringLiteral("the code %1 isn't printed").arg(codeText(code));
    });
}

/// A byte that goes to the printer as it is: it shows what the first page has there.
void CharacterSetter::setByte(Cell &cell)
{
    const int byte = cell.byte;
    if (byte < LineFiller::firstPrinting)
        return;
    if (!m_firstPage) {
        const QString name = m_sheet.profile().codePages().value(m_sheet.layout().firstPage);
        m_firstPage = CodePage::forName(name);
    }
    cell.character = m_firstPage ? m_firstPage->character(cell.byte) : u'\0';
    if (cell.character > LineFiller::lastControl || LineFiller::isPlain(cell.character))
        return;
    clearByte(cell);
    m_sheet.notes().addOnce(FreeByte, uint(byte), [byte] {
        return QStringLiteral("the code %1 isn't printed: it is free on the code page")
            .arg(codeText(byte));
    });
}

void CharacterSetter::clearByte(Cell &cell)
{
    cell.character = u' ';
    cell.byte = 0;
    cell.format &= static_cast<quint8>(~CharRawCode);
}

/// Whether all that is pending can be defined, or would be blank anyway.
bool CharacterSetter::takesOwnCharacters()
{
    m_own.clear();
    return std::all_of(m_pending.begin(), m_pending.end(),
                       [this](const Cell *cell) { return isBlank(*cell) || countOwn(*cell); });
}

/// As many as the printer takes; the others are blank.
void CharacterSetter::setOwnCharacters()
{
    m_own.clear();
    for (Cell *cell : m_pending) {
        if (!isBlank(*cell) && countOwn(*cell))
            setDrawing(*cell, fontOf(*cell).ownCharacter);
        else
            setBlank(*cell);
    }
}

/// What can't be defined goes as dots among the letters, if all of that does.
bool CharacterSetter::setLineDots(const PrintLayout::Row &row)
{
    if (!takesLineDots(row))
        return false;
    PrintLayout &layout = m_sheet.layout();
    const auto first = layout.cells.begin() + row.first;
    const std::vector<Cell> unset(first, first + row.count);
    const size_t unprinted = layout.unprintedCells.size();
    m_own.clear();
    for (Cell *cell : m_pending) {
        if (isBlank(*cell)) {
            setBlank(*cell);
        } else if (countOwn(*cell)) {
            setDrawing(*cell, fontOf(*cell).ownCharacter);
        } else {
            setDrawing(*cell, dotsOf(*cell));
            cell->isDots = true;
        }
    }
    if (linedots::areWorth(layout, row))
        return true;
    std::copy(unset.begin(), unset.end(), first);
    layout.unprintedCells.resize(unprinted);
    return false;
}

/// They stand on the base of the row, and don't make it higher.
bool CharacterSetter::takesLineDots(const PrintLayout::Row &row)
{
    if (!linedots::areKnownTo(m_sheet.profile()) || row.height < linedots::height ||
        m_sheet.layout().drawings.size() > mostDrawings)
        return false;
    const PrintLayout &layout = m_sheet.layout();
    int width = 0;
    for (int i = row.first; i < row.first + row.count; ++i)
        width += layout.sizeOf(layout.cells[size_t(i)]).width();
    m_own.clear();
    return width <= m_sheet.target().lineDots() &&
           std::all_of(m_pending.begin(), m_pending.end(), [this, &layout](const Cell *cell) {
               return isBlank(*cell) || countOwn(*cell) ||
                      layout.sizeOf(*cell).height() <= linedots::height;
           });
}

void CharacterSetter::setDots(const PrintLayout::Row &row)
{
    for (Cell *cell : m_pending) {
        if (isBlank(*cell))
            setBlank(*cell);
        else if (isSymbol(*cell))
            setDrawing(*cell, dotsOf(*cell));
    }
    Cell *const cells = m_sheet.layout().cells.data() + row.first;
    for (int i = 0; i < row.count; ++i)
        setDots(cells[i]);
}

void CharacterSetter::setDots(Cell &cell)
{
    if ((cell.format & CharRawCode) != 0 && cell.byte < LineFiller::firstPrinting) {
        const int code = cell.byte;
        clearByte(cell);
        m_sheet.notes().addOnce(UnsentCode, uint(code), [code] {
            return QStringLiteral("the code %1 isn't sent: its row is printed as dots")
                .arg(codeText(code));
        });
    }
    if (cell.drawing < 0 && !LineFiller::isPlain(cell.character) && !glyphs::has(cell.character))
        noteWithoutGlyph(cell.character);
}

/// Counts a character that has to be defined for the row; false if the printer doesn't take it.
bool CharacterSetter::countOwn(const Cell &cell)
{
    const QSize size = fontOf(cell).ownCharacter;
    const bool isFull = m_sheet.layout().drawings.size() > mostDrawings;
    if (size.isEmpty() || isFull || (isSymbol(cell) && !hasDrawing(cell.character, size)))
        return false;
    const Key key = keyOf(cell, size);
    if (std::find(m_own.begin(), m_own.end(), key) != m_own.end())
        return true;
    if (static_cast<int>(m_own.size()) >= m_sheet.profile().ownCharacters() || !isDefinable(key))
        return false;
    m_own.push_back(key);
    return true;
}

/// Whether its dots, as a definition has them, aren't a command that acts at once.
bool CharacterSetter::isDefinable(const Key &key)
{
    const auto known = m_definable.constFind(key);
    if (known != m_definable.constEnd())
        return *known;
    const bool isSafe = hazards::isDefinable(drawingOf(key), m_sheet.profile());
    m_definable.insert(key, isSafe);
    return isSafe;
}

Paper::Picture CharacterSetter::drawingOf(const Key &key)
{
    return key.isSymbol ? symbolOf(key.character, key.size) : glyphs::of(key.character, key.size);
}

void CharacterSetter::setBlank(Cell &cell)
{
    const char16_t character = cell.character;
    const QSize size = dotsOf(cell);
    m_sheet.notes().addOnce(NoLetter, character, [this, &cell, character, size] {
        if (!isSymbol(cell))
            return QStringLiteral("the character %1 is blank: the model has no letter for it")
                .arg(characterText(character));
        if (!isBlank(cell))
            return QStringLiteral("the symbol %1 is blank: the model takes no drawing of it")
                .arg(int(character));
        return QStringLiteral("the symbol %1 is blank: it has no drawing that fits %2 x %3 dots")
            .arg(int(character))
            .arg(size.width())
            .arg(size.height());
    });
    cell.character = u' ';
    PrintLayout &layout = m_sheet.layout();
    layout.unprintedCells.push_back(static_cast<int>(&cell - layout.cells.data()));
}

void CharacterSetter::setDrawing(Cell &cell, QSize size)
{
    const Key key = keyOf(cell, size);
    if (isSymbol(cell))
        cell.character = u' ';
    else if (!glyphs::has(cell.character))
        noteWithoutGlyph(cell.character);
    const auto known = m_drawings.constFind(key);
    if (known != m_drawings.constEnd()) {
        cell.drawing = *known;
        return;
    }
    QVector<Paper::Picture> &drawings = m_sheet.layout().drawings;
    cell.drawing = static_cast<qint16>(drawings.size());
    drawings.append(drawingOf(key));
    m_drawings.insert(key, cell.drawing);
}

bool CharacterSetter::isSymbol(const Cell &cell)
{
    return cell.character >= documents::firstSymbol && cell.character <= documents::lastSymbol;
}

const PrintFont &CharacterSetter::fontOf(const Cell &cell) const
{
    return m_sheet.target().font(cell.font);
}

/// What a drawing may take in a row of dots, where those of a font that is another one doubled are
/// as large as the others of that row.
QSize CharacterSetter::dotsOf(const Cell &cell) const
{
    const PrintFont &font = fontOf(cell);
    return {font.cell.width() / font.widthScale, font.cell.height() / font.heightScale};
}

CharacterSetter::Key CharacterSetter::keyOf(const Cell &cell, QSize size)
{
    return {cell.character, isSymbol(cell), size};
}

/// A symbol without a drawing, even one as large as its cell.
bool CharacterSetter::isBlank(const Cell &cell) const
{
    return isSymbol(cell) && !hasDrawing(cell.character, dotsOf(cell));
}

bool CharacterSetter::hasDrawing(char16_t symbol, QSize size) const
{
    const Key key = {symbol, true, size};
    const auto known = m_drawn.constFind(key);
    if (known != m_drawn.constEnd())
        return *known;
    const bool isDrawn = findDrawing(static_cast<signed char>(symbol), size);
    m_drawn.insert(key, isDrawn);
    return isDrawn;
}

bool CharacterSetter::findDrawing(signed char symbol, QSize size) const
{
    const auto drawings = m_symbols.equal_range(symbol);
    return std::any_of(drawings.first, drawings.second, [size](const MonochromeImage &image) {
        return image.isValid() && image.width() <= size.width() && image.height() <= size.height();
    });
}

/// A drawing stands in the upper left corner.
Paper::Picture CharacterSetter::symbolOf(char16_t symbol, QSize size)
{
    const MonochromeImage image = m_symbols.getImage(symbol, size.width(), size.height());
    const int rowBytes = (size.width() + bitsOfSymbolRows - 1) / bitsOfSymbolRows;
    Paper::Picture picture;
    picture.size = size;
    picture.rows = QByteArray(rowBytes * size.height(), '\0');
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            char &byte = picture.rows.data()[y * rowBytes + x / bitsOfSymbolRows];
            if (image.pixel(x, y, bitsOfSymbolRows))
                byte = static_cast<char>(byte | 0x80 >> x % bitsOfSymbolRows);
        }
    }
    return picture;
}

void CharacterSetter::noteWithoutGlyph(uint character)
{
    m_sheet.notes().addOnce(NoGlyph, character, [character] {
        return QStringLiteral("the character %1 is printed as a box: it has no drawing")
            .arg(characterText(character));
    });
}

}  // namespace printerslib::drivers
