#pragma once

#include <QTextStream>

#include "printerslib/drivers/paper.h"

/// All that papers hold, as text: for comparing them.
namespace describedpapers {

using printerslib::drivers::Paper;

inline QTextStream &operator<<(QTextStream &out, const QRect &place)
{
    return out << place.x() << ',' << place.y() << ' ' << place.width() << 'x' << place.height();
}

inline QString described(const Paper &paper)
{
    QString text;
    QTextStream out(&text);
    out << paper.width << 'x' << paper.length << " from " << paper.firstByte
        << (paper.isCut ? " cut" : "") << (paper.isTooLong ? " too long" : "") << '\n';
    for (const Paper::Line &line : paper.lines)
        out << "line " << line.kind << ' ' << line.isWrapped << ' ' << line.top << '+'
            << line.height << " cells " << line.firstCell << '+' << line.cellCount << " pictures "
            << line.firstPicture << '+' << line.pictureCount << " codes " << line.firstCode << '+'
            << line.codeCount << " blank " << line.blankLines << '\n';
    for (const Paper::Cell &cell : paper.cells)
        out << "cell " << cell.character << ' '
            << QRect(cell.left, cell.top, cell.width, cell.height) << ' ' << cell.widthScale << 'x'
            << cell.heightScale << ' ' << cell.effects << ' ' << cell.drawing << '\n';
    for (const Paper::Picture &picture : paper.pictures)
        out << "picture " << picture.place << ' ' << picture.size.width() << 'x'
            << picture.size.height() << ' ' << picture.rows.toHex() << '\n';
    for (const Paper::Code &code : paper.codes)
        out << "code " << int(code.symbology) << ' ' << code.place << ' ' << code.payload.toHex()
            << ' ' << code.fault << '\n';
    for (const Paper::Event &event : paper.events)
        out << "event " << event.kind << ' ' << event.offset << ' ' << event.top << ' '
            << event.text << '\n';
    return text;
}

inline QString described(const QVector<Paper> &papers)
{
    QString text;
    for (const Paper &paper : papers)
        text += described(paper);
    return text;
}

}  // namespace describedpapers
