#include "interpreter/printer_p.h"

#include <algorithm>

#include "commandsets/commandtext_p.h"
#include "interpreter/dots_p.h"
#include "interpreter/handlers_macro_p.h"
#include "interpreter/handlers_p.h"
#include "interpreter/handlers_page_p.h"
#include "interpreter/handlers_starraster_p.h"

namespace printerslib::drivers {

namespace {

int paperDotsOf(const PrinterProfile &profile, const StreamInterpreter::Options &options)
{
    int dots = profile.headDots();
    if (options.paperDots > 0)
        dots = std::min(dots, options.paperDots);
    const int column = profile.fontCells().value(profile.initialFont()).width();
    if (options.columns > 0 && options.columns < dots / column)
        dots = options.columns * column;
    return dots;
}

Paper blankPaper(const PrinterProfile &profile, int width)
{
    Paper paper;
    paper.width = width;
    paper.dotsPerInch = profile.dotsPerInch();
    paper.cell = profile.fontCells().value(profile.initialFont());
    return paper;
}

/// What a printer leaves to its neighbour on the line while that is chosen, or throws away while
/// it is deselected.
bool isForSelected(const StreamCommand &command)
{
    return command.kind != StreamCommand::Command ||
           (command.row->id != CommandId::PrinterSelect &&
            (command.row->traits & CommandRow::ActsAtOnce) == 0);
}

/// Rows of the raster mode are on paper before anything else is.
bool endsRasterRows(const CommandRow &row)
{
    return (row.traits & (CommandRow::InRasterMode | CommandRow::ActsAtOnce)) == 0 &&
           row.id != CommandId::RasterClear;
}

}  // namespace

Printer::Printer(const PrinterProfile &printerProfile,
                 const StreamInterpreter::Options &givenOptions)
    : profile(printerProfile),
      options(givenOptions),
      paperDots(paperDotsOf(profile, options)),
      firstCodePage(options.codePage >= 0 ? options.codePage : profile.initialCodePage()),
      roll(blankPaper(profile, paperDots)),
      state(profile, firstCodePage, paperDots),
      page(paperDots, profile.fontCells().value(profile.initialFont()).height())
{}

void Printer::obey(const StreamCommand &command)
{
    roll.setOffset(command.offset);
    m_place = command.offset;
    if (!command.realTime.isEmpty())
        obeyAtOnce(command);
    if (!isSelected && isForSelected(command))
        return;
    if (recordForMacro(*this, command))
        return;
    if (command.kind != StreamCommand::Text && state.kanji.lead >= 0) {
        state.kanji.lead = -1;
        note(QStringLiteral("half of a two-byte character is left out"));
    }
    switch (command.kind) {
        case StreamCommand::Text:
            printText(command.bytes);
            return;
        case StreamCommand::Command:
            call(command);
            return;
        default:
            tellUnknown(command);
    }
}

/// Commands inside the data of this one that don't wait for its end.
void Printer::obeyAtOnce(const StreamCommand &command)
{
    for (const StreamCommand::RealTime &inner : command.realTime) {
        roll.setOffset(inner.offset);
        StreamCommand own;
        own.kind = StreamCommand::Command;
        own.offset = inner.offset;
        own.bytes = inner.bytes;
        own.row = inner.row;
        own.operandsBegin = inner.row->introducerSize;
        own.payloadBegin = own.bytes.size();
        own.isSwitchedOff = inner.isSwitchedOff;
        call(own);
    }
    roll.setOffset(command.offset);
}

void Printer::call(const StreamCommand &command)
{
    const CommandHandler handler = handlerOf(profile.dialect(), command.row->id);
    if (endsRasterRows(*command.row))
        flushRasterRows(*this);
    if (command.isSwitchedOff)
        noteFor(command, QStringLiteral("is switched off"));
    else if (handler != nullptr)
        handler(*this, command);
    else
        noteFor(command, QStringLiteral("isn't carried out"));
}

void Printer::noteFor(const StreamCommand &command, const QString &text)
{
    note(mnemonicOf(command) + u' ' + text);
}

void Printer::tellUnknown(const StreamCommand &command)
{
    if (command.kind == StreamCommand::Skipped)
        noteFor(command,
                QStringLiteral("isn't known; its %1 bytes are skipped").arg(command.bytes.size()));
    else if (command.kind == StreamCommand::Unknown)
        noteFor(command, QStringLiteral("isn't known"));
    else
        note(endsInside(command));
}

/// Custom's printers have three fonts, two of which are A and B at a time.
QSize Printer::cellSize() const
{
    static constexpr int fontsOfPitch[][2] = {{0, 1}, {1, 2}, {2, 1}};
    const QVector<QSize> cells = profile.fontCells();
    int font = state.font;
    if (state.charactersPerInch > 0 && font < 2)
        font = fontsOfPitch[state.charactersPerInch][font];
    return cells.value(font, cells.first());
}

int Printer::lineWidth() const
{
    return isPageMode ? page.width() : state.areaWidth;
}

// Fractions are rounded, so that what an encoder computes from dots comes out as these dots.
int Printer::dotsAcross(int units) const
{
    return qRound(double(units) * profile.dotsPerInch() / state.motionUnits.width());
}

int Printer::dotsDown(int units) const
{
    return qRound(double(units) * profile.dotsPerInch() / state.motionUnits.height());
}

int Printer::columnWidth() const
{
    const int width = state.pitch > 0 ? state.pitch : cellSize().width();
    return (width + state.spacing) * state.widthScale;
}

int Printer::ownKey(int byte) const
{
    return 0x10000 * (state.font + 1) + byte;
}

int Printer::ownKeyOfTwo(int lead, int trail)
{
    return 0x100 * lead + trail;
}

void Printer::defineCharacter(int key, const Paper::Picture &drawn, QSize cell)
{
    OwnCharacter own;
    own.drawing = croppedPicture(drawn, cell);
    if (options.letters != nullptr)
        own.letter = options.letters->letterOf(own.drawing, cell);
    // Never the letter of the byte, which would look like text.
    if (own.letter == 0)
        own.letter = u'\uFFFD';
    ownCharacters.insert(key, own);
}

void Printer::printText(const QByteArray &bytes)
{
    if (state.kanji.isOn && state.kanji.set) {
        for (const char byte : bytes) {
            printTwoByte(static_cast<unsigned char>(byte));
            ++m_place;
        }
        return;
    }
    Paper::Cell look;
    const QSize cell = cellSize();
    look.widthScale = quint8(state.widthScale);
    look.heightScale = quint8(state.heightScale);
    look.width = quint16(cell.width() * state.widthScale);
    look.height = quint16(cell.height() * state.heightScale);
    if (state.isTurned)
        std::swap(look.width, look.height);
    look.effects = state.effects();
    const int advance =
        state.isTurned ? look.width + state.spacing * state.widthScale : columnWidth();
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const int key = state.usesOwnCharacters ? ownKey(byte) : 0;
        printCharacter(state.charset.character(byte), key, look, advance);
        ++m_place;
    }
}

void Printer::printCharacter(char16_t character, int key, const Paper::Cell &look, int advance)
{
    if (line.x > 0 && line.x + advance > lineWidth()) {
        roll.setOffset(m_place);
        printLine(1);
        line.isWrapped = true;
    }
    Paper::Cell cell = look;
    cell.left = line.x;
    cell.character = character;
    if (key != 0) {
        const auto own = ownCharacters.constFind(key);
        if (own != ownCharacters.constEnd()) {
            cell.drawing = line.items.drawings.size();
            line.items.drawings.append(own->drawing);
            cell.character = own->letter;
        }
    }
    line.add(cell, advance);
}

void Printer::printTwoByte(unsigned char byte)
{
    KanjiState &kanji = state.kanji;
    if (kanji.lead < 0) {
        if (kanji.set->isLead(byte))
            kanji.lead = byte;
        else
            printSingle(byte);
        return;
    }
    const auto lead = static_cast<unsigned char>(kanji.lead);
    kanji.lead = -1;
    const char16_t character = kanji.set->character(lead, byte);
    const int side = cellSize().height();
    const int widthScale = kanji.isDoubleWidth ? 2 : state.widthScale;
    const int heightScale = kanji.isDoubleHeight ? 2 : state.heightScale;
    Paper::Cell look;
    look.widthScale = quint8(widthScale);
    look.heightScale = quint8(heightScale);
    look.width = quint16(side * widthScale);
    look.height = quint16(side * heightScale);
    look.effects = state.effects();
    if (kanji.underline > 0)
        look.effects |= quint16(kanji.underline > 1 ? Paper::ThickUnderline : Paper::Underline);
    const int advance = look.width + (kanji.spacingLeft + kanji.spacingRight) * widthScale;
    printCharacter(character == 0 ? u'\uFFFD' : character, ownKeyOfTwo(lead, byte), look, advance);
    line.items.cells.last().left += kanji.spacingLeft * widthScale;
}

/// A single byte among two-byte characters.
void Printer::printSingle(unsigned char byte)
{
    state.kanji.isOn = false;
    printText(QByteArray(1, static_cast<char>(byte)));
    state.kanji.isOn = true;
    --m_place;  // the caller counts it
}

/// Where something of a width begins, by the alignment.
int Printer::alignedLeft(int width) const
{
    const int rest = std::max(0, state.areaWidth - width);
    return state.leftMargin + (state.alignment == 0 ? 0 : state.alignment == 1 ? rest / 2 : rest);
}

/// Lines upside down are turned as a whole, so what came first is at their right.
int Printer::mirrored(int left, int width) const
{
    return 2 * state.leftMargin + state.areaWidth - left - width;
}

void Printer::settleLine()
{
    line.settle(alignedLeft(line.end));
    if (!state.isUpsideDown)
        return;
    for (Paper::Cell &cell : line.items.cells)
        cell.left = mirrored(cell.left, cell.width);
    for (Paper::Picture &picture : line.items.pictures) {
        const QRect place = picture.place;
        picture = turnedPicture(picture, 2);
        picture.place = place;
        picture.place.moveLeft(mirrored(place.left(), place.width()));
    }
}

void Printer::printLine(int lines)
{
    printLineAndFeed(lines * state.lineSpacing);
}

void Printer::printLineAndFeed(int dots)
{
    if (isPageMode) {
        if (!page.take(line))
            note(QStringLiteral("what lies outside of the page's area is left out"));
        page.setY(std::min(page.y() + dots, Paper::longest));
        line.clear();
        return;
    }
    if (line.isEmpty()) {
        line.clear();
        roll.feed(dots, state.lineSpacing);
        return;
    }
    settleLine();
    // The head can't go back: what it prints passes below it.
    const int advance = std::max(line.height, std::min(dots, state.lineSpacing));
    const auto kind = line.items.cells.isEmpty() ? Paper::Line::Graphics : Paper::Line::Text;
    roll.print(kind, line.items, line.height, advance, line.isWrapped);
    line.clear();
    roll.feed(dots - advance, state.lineSpacing);
}

void Printer::endLineFor(const StreamCommand &command)
{
    if (line.isEmpty() || isPageMode)
        return;
    noteFor(command, QStringLiteral("doesn't begin a line; the line before it is printed"));
    printLine(1);
}

bool Printer::isAtLineStart(const StreamCommand &command)
{
    if (line.isEmpty() && line.x == 0)
        return true;
    noteFor(command, QStringLiteral("counts at the beginning of a line only"));
    return false;
}

void Printer::dropLine(const StreamCommand &command)
{
    if (!line.isEmpty())
        noteFor(command, QStringLiteral("clears %1 characters that weren't printed yet")
                             .arg(line.items.cells.size()));
    line.clear();
}

// What is printed as it is kept isn't copied.
bool Printer::mayCopy(qint64 bytes, const QString &what)
{
    constexpr qint64 bytesAtFirst = qint64(16) * 1024 * 1024;
    constexpr qint64 bytesPerByte = 100;
    const bool may = m_copiedBytes + bytes <= bytesAtFirst + bytesPerByte * m_place;
    if (may)
        m_copiedBytes += bytes;
    else
        note(QStringLiteral("%1 is left out, as the stream asks for too many copies").arg(what));
    return may;
}

bool Printer::mayCopy(const Paper::Picture &picture)
{
    return mayCopy(picture.rows.size(), QStringLiteral("a picture"));
}

void Printer::addToLine(Paper::Picture picture)
{
    const QSize dots = dotsOf(picture);
    const int room = lineWidth() - line.x;
    if (dots.width() > room) {
        note(QStringLiteral("a picture of %1 dots is wider than the %2 that are left")
                 .arg(dots.width())
                 .arg(room));
    }
    if ((dots.width() > room || isPageMode || state.isUpsideDown) && !mayCopy(picture))
        return;
    picture = croppedPicture(
        picture, {std::max(0, room) / picture.dotsPerPixel.width(), picture.size.height()});
    if (picture.size.isEmpty())
        return;
    picture.place = QRect({line.x, 0}, dotsOf(picture));
    line.add(picture);
}

void Printer::printPicture(Paper::Picture picture)
{
    if (picture.size.isEmpty())
        return;
    if (isPageMode) {
        addToLine(picture);
        return;
    }
    const int width = dotsOf(picture).width();
    const bool isPart = width > state.areaWidth || roll.endsWithin(dotsOf(picture).height());
    if ((isPart || state.isUpsideDown) && !mayCopy(picture))
        return;
    if (width > state.areaWidth) {
        const int pixels = state.areaWidth / picture.dotsPerPixel.width();
        const Paper::Picture whole = picture;
        picture = croppedPicture(whole, {pixels, whole.size.height()});
        // What is left of the last byte of a row may be blank.
        if (picture.rows != whole.rows)
            note(QStringLiteral("a picture of %1 dots is wider than the line of %2")
                     .arg(width)
                     .arg(state.areaWidth));
    }
    if (picture.size.isEmpty())
        return;
    const QSize dots = dotsOf(picture);
    int left = alignedLeft(dots.width());
    if (state.isUpsideDown) {
        picture = turnedPicture(picture, 2);
        left = mirrored(left, dots.width());
    }
    picture.place = QRect({left, 0}, dots);
    LineItems items;
    items.pictures.append(picture);
    roll.print(Paper::Line::Graphics, items, dots.height(), dots.height());
}

void Printer::finish(qint64 end)
{
    roll.setOffset(end);
    flushRasterRows(*this);
    if (isPageMode && !(page.items().isEmpty() && line.isEmpty())) {
        note(QStringLiteral("the page isn't printed before a command for that comes"));
        printPage(*this);
        leavePageMode(*this);
    } else if (!line.isEmpty()) {
        note(QStringLiteral("the last line isn't printed before its line feed comes"));
        printLine(1);
    }
}

void Printer::reset()
{
    line.clear();
    isPageMode = false;
    page.reset();
    state = PrintState(profile, firstCodePage, paperDots);
    symbols.clear();
    ownCharacters.clear();
    graphics.downloaded.clear();
    graphics.download = {};
    graphics.waiting.clear();
    roll.addEvent(Paper::Event::Reset, QStringLiteral("reset"));
}

}  // namespace printerslib::drivers
