#include "interpreter/paperroll_p.h"

#include <algorithm>

#include "interpreter/dots_p.h"

namespace printerslib::drivers {

PaperRoll::PaperRoll(const Paper &blank) : m_blank(blank), m_paper(blank) {}

void PaperRoll::setOffset(qint64 offset)
{
    m_offset = offset;
    if (!m_hasFirstByte)
        m_paper.firstByte = offset;
    m_hasFirstByte = true;
}

bool PaperRoll::hasRoomFor(int dots)
{
    if (dots <= Paper::longest - m_top)
        return true;
    if (!m_paper.isTooLong)
        note(QStringLiteral("the paper is longer than %1 dots; what comes is left out")
                 .arg(Paper::longest));
    m_paper.isTooLong = true;
    m_top = Paper::longest;
    m_paper.length = m_top;
    return false;
}

namespace {

/// What of pictures lies above a height, in whole pixels.
LineItems upperPartOf(const LineItems &items, int height)
{
    LineItems part;
    for (const Paper::Picture &picture : items.pictures) {
        const int pixels = (height - picture.place.top()) / picture.dotsPerPixel.height();
        Paper::Picture upper = croppedPicture(picture, {picture.size.width(), pixels});
        upper.place.setSize(dotsOf(upper));
        if (!upper.size.isEmpty())
            part.pictures.append(upper);
    }
    return part;
}

}  // namespace

void PaperRoll::print(Paper::Line::Kind kind, const LineItems &items, int height, int advance,
                      bool isWrapped)
{
    if (m_paper.isTooLong)
        return;
    const int room = Paper::longest - m_top;
    if (advance > room && kind == Paper::Line::Graphics && items.codes.isEmpty()) {
        if (height > room)
            note(QStringLiteral("a picture of %1 dots is taller than the %2 that are left")
                     .arg(height)
                     .arg(room));
        const LineItems upperPart = upperPartOf(items, room);
        if (!upperPart.isEmpty())
            append(kind, upperPart, std::min(height, room), room, isWrapped);
    }
    if (hasRoomFor(advance))
        append(kind, items, height, advance, isWrapped);
}

void PaperRoll::append(Paper::Line::Kind kind, const LineItems &items, int height, int advance,
                       bool isWrapped)
{
    Paper::Line line;
    line.kind = kind;
    line.isWrapped = isWrapped;
    line.top = m_top;
    line.height = advance;
    line.firstCell = m_paper.cells.size();
    line.cellCount = items.cells.size();
    const int firstDrawing = m_paper.pictures.size();
    m_paper.pictures += items.drawings;
    line.firstPicture = m_paper.pictures.size();
    line.pictureCount = items.pictures.size();
    line.firstCode = m_paper.codes.size();
    line.codeCount = items.codes.size();
    for (Paper::Cell cell : items.cells) {
        cell.top += m_top;
        if (cell.drawing >= 0)
            cell.drawing += firstDrawing;
        m_paper.cells.append(cell);
    }
    for (const Paper::Picture &picture : items.pictures) {
        m_paper.pictures.append(picture);
        m_paper.pictures.last().place.translate(0, m_top);
    }
    for (const Paper::Code &code : items.codes) {
        m_paper.codes.append(code);
        m_paper.codes.last().place.translate(0, m_top);
    }
    m_paper.lines.append(line);
    m_printedEnd = std::max(m_printedEnd, m_top + height);
    m_top += advance;
    m_paper.length = std::max(m_paper.length, m_top);
    m_looseDots = 0;
}

void PaperRoll::feed(int dots, int spacing)
{
    if (dots <= 0 || m_paper.isTooLong || !hasRoomFor(dots))
        return;
    const bool goesOn = !m_paper.lines.isEmpty() &&
                        m_paper.lines.last().kind == Paper::Line::Feed &&
                        m_paper.lines.last().top + m_paper.lines.last().height == m_top;
    if (!goesOn) {
        Paper::Line line;
        line.kind = Paper::Line::Feed;
        line.top = m_top;
        line.firstCell = m_paper.cells.size();
        line.firstPicture = m_paper.pictures.size();
        line.firstCode = m_paper.codes.size();
        m_paper.lines.append(line);
    }
    Paper::Line &line = m_paper.lines.last();
    line.height += dots;
    m_looseDots += dots;
    line.blankLines += m_looseDots / std::max(1, spacing);
    m_looseDots %= std::max(1, spacing);
    m_top += dots;
    m_paper.length = std::max(m_paper.length, m_top);
}

void PaperRoll::feedBack(int dots)
{
    m_top -= std::clamp(dots, 0, m_top);
    m_looseDots = 0;
}

void PaperRoll::addEvent(Paper::Event event)
{
    if (event.kind == Paper::Event::Note) {
        ++m_notes;
        if (m_notes > mostNotes + 1)
            return;
        if (m_notes == mostNotes + 1)
            event.text = QStringLiteral("there is more to note, which is left out");
    }
    event.offset = m_offset;
    event.top = m_top;
    m_paper.events.append(event);
}

void PaperRoll::addEvent(Paper::Event::Kind kind, const QString &text)
{
    Paper::Event event;
    event.kind = kind;
    event.text = text;
    addEvent(event);
}

/// Index of the first line from which on all lie below a place. Codes that nobody draws have no
/// height: at the place they lie above it.
int PaperRoll::firstLineBelow(int place) const
{
    const auto isBelow = [place](const Paper::Line &line) {
        return line.top > place || (line.top == place && line.height > 0);
    };
    int first = m_paper.lines.size();
    while (first > 0 && isBelow(m_paper.lines.at(first - 1)))
        --first;
    return first;
}

namespace {

/// Index of the first picture of a line, be it the drawing of a character.
int firstPictureOf(const Paper &paper, const Paper::Line &line)
{
    int first = line.firstPicture;
    for (int i = 0; i < line.cellCount; ++i) {
        const int drawing = paper.cells.at(line.firstCell + i).drawing;
        if (drawing >= 0)
            first = std::min(first, drawing);
    }
    return first;
}

/// Leaves the lines from one on, on a paper that begins at a place of the old one.
void keepLinesFrom(Paper &paper, int first, int place)
{
    const Paper::Line begin = paper.lines.at(first);
    const int firstPicture = firstPictureOf(paper, begin);
    paper.lines.remove(0, first);
    paper.cells.remove(0, begin.firstCell);
    paper.codes.remove(0, begin.firstCode);
    paper.pictures.remove(0, firstPicture);
    for (Paper::Line &line : paper.lines) {
        line.top -= place;
        line.firstCell -= begin.firstCell;
        line.firstCode -= begin.firstCode;
        line.firstPicture -= firstPicture;
        for (int i = 0; i < line.pictureCount; ++i)
            paper.pictures[line.firstPicture + i].place.translate(0, -place);
    }
    for (Paper::Cell &cell : paper.cells) {
        cell.top -= place;
        cell.drawing -= cell.drawing >= 0 ? firstPicture : 0;
    }
    for (Paper::Code &code : paper.codes)
        code.place.translate(0, -place);
}

/// Leaves the lines before one, on a paper that ends at a place.
void keepLinesBefore(Paper &paper, int end, int place)
{
    if (end < paper.lines.size()) {
        const Paper::Line next = paper.lines.at(end);
        paper.pictures.resize(firstPictureOf(paper, next));
        paper.cells.resize(next.firstCell);
        paper.codes.resize(next.firstCode);
        paper.lines.resize(end);
    }
    Paper::Line &last = paper.lines.last();
    if (last.kind == Paper::Line::Feed && last.top + last.height > place) {
        last.blankLines = last.blankLines * (place - last.top) / last.height;
        last.height = place - last.top;
    }
    paper.length = place;
}

}  // namespace

void PaperRoll::cut(Paper::Event::Kind kind, int place)
{
    if (m_printedEnd > std::max(0, place))
        note(QStringLiteral("the paper is cut %1 dots above the end of what is printed")
                 .arg(m_printedEnd - place));
    addEvent(kind, kind == Paper::Event::Cut ? QStringLiteral("cut")
                                             : QStringLiteral("cut, a bridge left"));
    const int lineCount = firstLineBelow(place);
    if (lineCount > 0)
        cutOff(place, lineCount);
}

/// The first lines become a piece of their own. Blank paper between cutter and head isn't
/// anybody's.
void PaperRoll::cutOff(int place, int lineCount)
{
    const bool isPrintedBelow =
        std::any_of(m_paper.lines.begin() + lineCount, m_paper.lines.end(),
                    [](const Paper::Line &line) { return line.kind != Paper::Line::Feed; });
    const Paper whole = m_paper;
    const int top = m_top;
    const int printedEnd = m_printedEnd;
    keepLinesBefore(m_paper, lineCount, place);
    m_paper.isCut = true;
    m_pieces.append(m_paper);
    startPiece();
    if (!isPrintedBelow)
        return;
    m_fedBefore -= top - place;
    m_paper.lines = whole.lines;
    m_paper.cells = whole.cells;
    m_paper.pictures = whole.pictures;
    m_paper.codes = whole.codes;
    keepLinesFrom(m_paper, lineCount, place);
    m_top = top - place;
    m_paper.length = m_top;
    m_printedEnd = printedEnd - place;
}

void PaperRoll::startPiece()
{
    m_fedBefore += m_top;
    m_paper = m_blank;
    m_hasFirstByte = false;
    m_top = 0;
    m_printedEnd = 0;
    m_looseDots = 0;
    m_notes = 0;
}

QVector<Paper> PaperRoll::takePieces()
{
    QVector<Paper> pieces;
    pieces.swap(m_pieces);
    return pieces;
}

QVector<Paper> PaperRoll::finish()
{
    if (!m_paper.isEmpty())
        m_pieces.append(m_paper);
    startPiece();
    return takePieces();
}

}  // namespace printerslib::drivers
