#pragma once

#include <QtTest>
#include <algorithm>

#include "laiddocuments.h"
#include "printerdocs/echarformat.h"
#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/streamlisting.h"
#include "printerslib/drivers/streamreader.h"

/// What a printer makes of encoded documents, beside what their layout says.
namespace printedpaper {

using namespace laiddocuments;

inline QVector<Paper> papersOf(const QByteArray &bytes, const PrinterProfile &profile)
{
    static const SymbologyDrawer codes;
    StreamInterpreter::Options options;
    options.codes = &codes;
    return StreamInterpreter::papersOf(bytes, profile, options);
}

inline EncodedDocument encoded(const TextPrinterDocument &document, const PrintTarget &target,
                               const PrintOptions &options = {})
{
    return DocumentEncoder(target, options).encode(document);
}

/// "offset: bytes" without offsets: the commands of a stream, one a line.
inline QStringList commandsOf(const QByteArray &bytes, const PrinterProfile &profile)
{
    QStringList commands;
    for (const StreamCommand &command : StreamReader::commandsOf(bytes, profile))
        commands.append(QString::fromLatin1(
            command.kind == StreamCommand::Text ? command.bytes : command.bytes.toHex(' ')));
    return commands;
}

/// Dots that are black, without those of letters.
class Ink
{
public:
    explicit Ink(int width) : m_width(width) {}

    void add(const Paper::Picture &picture, QPoint place)
    {
        const int bytesPerRow = (picture.size.width() + 7) / 8;
        for (int y = 0; y < picture.size.height() * picture.dotsPerPixel.height(); ++y) {
            for (int x = 0; x < picture.size.width() * picture.dotsPerPixel.width(); ++x) {
                const int pixel = x / picture.dotsPerPixel.width();
                const int byte = static_cast<unsigned char>(
                    picture.rows.at(y / picture.dotsPerPixel.height() * bytesPerRow + pixel / 8));
                if ((byte & (0x80 >> (pixel % 8))) != 0)
                    set(place.x() + x, place.y() + y);
            }
        }
    }
    void add(const Paper::Code &code, QPoint place)
    {
        Paper::Picture picture;
        picture.size = code.modules;
        picture.dotsPerPixel = code.module;
        picture.rows = code.rows;
        add(picture, place);
    }
    bool operator==(const Ink &other) const { return m_rows == other.m_rows; }
    /// "first row that differs", for messages.
    QString comparedTo(const Ink &other) const
    {
        for (int y = 0; y < std::max(m_rows.size(), other.m_rows.size()); ++y) {
            if (m_rows.value(y) != other.m_rows.value(y))
                return QStringLiteral("row %1: %2 instead of %3")
                    .arg(y)
                    .arg(QString::fromLatin1(m_rows.value(y).toHex()),
                         QString::fromLatin1(other.m_rows.value(y).toHex()));
        }
        return {};
    }
    int height() const { return m_rows.size(); }

private:
    void set(int x, int y)
    {
        while (m_rows.size() <= y)
            m_rows.append(QByteArray((m_width + 7) / 8, '\0'));
        if (x >= m_width)
            return;
        char &byte = m_rows[y].data()[x / 8];
        byte = static_cast<char>(byte | (0x80 >> (x % 8)));
    }

    int m_width;
    QVector<QByteArray> m_rows;
};

/// What is seen on a piece of paper.
struct Seen
{
    QStringList cells;  ///< but blank ones without lines or ground
    Ink ink{1024};
};

inline QString cellText(QRect place, char16_t character, int effects, const Paper::Picture *drawing)
{
    const QString what =
        drawing != nullptr ? QStringLiteral("[%1]").arg(QString::fromLatin1(drawing->rows.toHex()))
                           : QString(QChar(character));
    return QStringLiteral("%1,%2 %3x%4 %5 %6")
        .arg(place.x())
        .arg(place.y())
        .arg(place.width())
        .arg(place.height())
        .arg(effects)
        .arg(what);
}

inline bool isSeen(const QString &what, int effects)
{
    return !what.endsWith(u' ') ||
           (effects & (Paper::Underline | Paper::ThickUnderline | Paper::Inverse)) != 0;
}

inline Seen seenOn(const Paper &paper)
{
    Seen seen;
    for (const Paper::Cell &cell : paper.cells) {
        const Paper::Picture *drawing =
            cell.drawing < 0 ? nullptr : &paper.pictures.at(cell.drawing);
        const QString text = cellText({cell.left, cell.top, cell.width, cell.height},
                                      cell.character, cell.effects, drawing);
        if (isSeen(text, cell.effects))
            seen.cells.append(text);
    }
    for (const Paper::Line &line : paper.lines) {
        for (int i = 0; i < line.pictureCount; ++i) {
            const Paper::Picture &picture = paper.pictures.at(line.firstPicture + i);
            seen.ink.add(picture, picture.place.topLeft());
        }
    }
    for (const Paper::Code &code : paper.codes)
        seen.ink.add(code, code.place.topLeft());
    return seen;
}

inline int effectsOf(const PrintLayout::Cell &cell)
{
    int effects = 0;
    if ((cell.format & CharBold) != 0)
        effects |= Paper::Bold;
    if ((cell.format & CharItalic) != 0)
        effects |= Paper::Italic;
    if ((cell.format & CharUnderline) != 0)
        effects |= Paper::ThickUnderline;
    if ((cell.format & CharMarkZ) != 0)
        effects |= Paper::Inverse;
    return effects;
}

/// Cells of a row of text; its foot is so far down.
inline void addCells(Seen &seen, const PrintLayout &layout, const PrintLayout::Row &row, int foot)
{
    int left = 0;
    for (int i = row.first; i < row.first + row.count; ++i) {
        const PrintLayout::Cell &cell = layout.cells[size_t(i)];
        const QSize size = layout.sizeOf(cell);
        const QRect place(QPoint(left, foot - size.height()), size);
        left += size.width();
        if (cell.isDots) {
            PrintLayout::Row dots = row;
            dots.first = i;
            dots.count = 1;
            seen.ink.add(layout.rasterOf(dots), {place.left(), foot - row.height});
            continue;
        }
        const Paper::Picture *drawing =
            cell.drawing < 0 ? nullptr : &layout.drawings.at(cell.drawing);
        const QString text = cellText(place, cell.character, effectsOf(cell), drawing);
        if (isSeen(text, effectsOf(cell)))
            seen.cells.append(text);
    }
}

inline Seen seenIn(const PrintLayout &layout)
{
    Seen seen;
    int top = 0;
    for (const PrintLayout::Row &row : layout.rows) {
        if (row.kind == PrintLayout::Row::Text && row.isRaster)
            seen.ink.add(layout.rasterOf(row), {0, top});
        else if (row.kind == PrintLayout::Row::Text)
            addCells(seen, layout, row, top + row.height);
        else if (row.kind == PrintLayout::Row::Picture)
            seen.ink.add(layout.pictures.at(row.first), {row.left, top});
        else if (row.kind == PrintLayout::Row::Code)
            seen.ink.add(layout.codes.at(row.first), {row.left, top});
        top += row.height + row.feed;
    }
    return seen;
}

/// Events but cuts and resets, as text; of all papers.
inline QStringList eventsOf(const QVector<Paper> &papers)
{
    QStringList events;
    for (const Paper &paper : papers) {
        for (const Paper::Event &event : paper.events) {
            if (event.kind != Paper::Event::Cut && event.kind != Paper::Event::PartialCut &&
                event.kind != Paper::Event::Reset)
                events.append(event.text);
        }
    }
    return events;
}

/// What the first paper shows otherwise than the layout says, or empty.
inline QString differenceOf(const TextPrinterDocument &document, const PrintTarget &target,
                            const PrintOptions &options = {})
{
    const PrintLayout layout = layoutOf(document, target, options);
    const EncodedDocument bytes = DocumentEncoder(target, options).encode(document, layout);
    if (!bytes.error.isEmpty())
        return bytes.error;
    const QVector<Paper> papers = papersOf(bytes.bytes, target.profile());
    const Seen wanted = seenIn(layout);
    const Seen seen = papers.isEmpty() ? Seen() : seenOn(papers.first());
    const QStringList events = eventsOf(papers);
    if (!events.isEmpty())
        return QStringLiteral("event: %1").arg(events.first());
    for (int i = 0; i < std::max(wanted.cells.size(), seen.cells.size()); ++i) {
        if (wanted.cells.value(i) != seen.cells.value(i))
            return QStringLiteral("cell %1 instead of %2")
                .arg(seen.cells.value(i), wanted.cells.value(i));
    }
    return seen.ink.comparedTo(wanted.ink);
}

inline QStringList models()
{
    return PrinterProfile::modelIds();
}

/// A row of test data for each model.
inline void addModels()
{
    QTest::addColumn<QString>("model");
    for (const QString &model : models())
        QTest::newRow(qPrintable(model)) << model;
}

inline PrintTarget target(const QString &model, int paper = 0, int font = 0)
{
    return targetOf(model.toLatin1().constData(), paper, font);
}

}  // namespace printedpaper
