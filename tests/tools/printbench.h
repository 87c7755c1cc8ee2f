#pragma once

#include "picturebench.h"
#include "printerslib/drivers/symbologydrawer.h"

/// What printers have printed, drawn: pieces of paper that are made by hand here.
namespace printbench {

using namespace picturebench;
using Print = printerslib::drivers::Paper;

inline constexpr QSize font(12, 24);
inline constexpr int margin = 63;  // of 639 dots of paper

/// A piece of paper under a pen.
class Piece
{
public:
    Piece()
    {
        m_print.width = 512;
        m_print.cell = font;
    }

    /// A line of its own at a height, with cells side by side.
    Piece &text(const QString &text, const QPoint &place, quint16 effects = 0,
                const QSize &scale = {1, 1})
    {
        Print::Line &line = addLine(place.y(), font.height() * scale.height());
        QPoint at = place;
        for (const QChar character : text) {
            Print::Cell cell;
            cell.left = at.x();
            cell.top = at.y();
            QSize size(font.width() * scale.width(), font.height() * scale.height());
            if ((effects & Print::Turned) != 0)
                size.transpose();
            cell.width = static_cast<quint16>(size.width());
            cell.height = static_cast<quint16>(size.height());
            cell.widthScale = static_cast<quint8>(scale.width());
            cell.heightScale = static_cast<quint8>(scale.height());
            cell.effects = effects;
            cell.character = character.unicode();
            m_print.cells.append(cell);
            ++line.cellCount;
            at.rx() += cell.width;
        }
        return *this;
    }

    /// The last line's cells show this picture.
    Piece &asDrawing(const QSize &size, const QByteArray &rows)
    {
        Print::Picture picture;
        picture.size = size;
        picture.rows = rows;
        m_print.pictures.append(picture);
        for (int i = 0; i < m_print.lines.constLast().cellCount; ++i)
            m_print.cells[m_print.lines.constLast().firstCell + i].drawing =
                m_print.pictures.size() - 1;
        return *this;
    }

    Piece &picture(const QPoint &place, const QSize &size, const QByteArray &rows,
                   const QSize &dots = {1, 1})
    {
        Print::Line &line = addLine(place.y(), size.height() * dots.height());
        Print::Picture picture;
        picture.place =
            QRect(place, QSize(size.width() * dots.width(), size.height() * dots.height()));
        picture.size = size;
        picture.dotsPerPixel = dots;
        picture.rows = rows;
        m_print.pictures.append(picture);
        line.pictureCount = 1;
        return *this;
    }

    Piece &code(const QPoint &place, Print::Symbology symbology, const QByteArray &payload,
                const QSize &module)
    {
        Print::Code code;
        code.symbology = symbology;
        code.payload = payload;
        code.module = module;
        printerslib::drivers::SymbologyDrawer().draw(code);
        code.place = QRect(place, QSize(code.modules.width() * module.width(),
                                        code.modules.height() * module.height()));
        addLine(place.y(), code.place.height()).codeCount = 1;
        m_print.codes.append(code);
        return *this;
    }

    Piece &cut()
    {
        m_print.isCut = true;
        return *this;
    }
    Piece &length(int dots)
    {
        m_print.length = dots;
        return *this;
    }
    Piece &width(int dots)
    {
        m_print.width = dots;
        return *this;
    }
    Piece &wrapped()
    {
        m_print.lines.last().isWrapped = true;
        return *this;
    }

    operator Print() const { return m_print; }

private:
    Print::Line &addLine(int lineTop, int height)
    {
        Print::Line line;
        line.top = lineTop;
        line.height = height;
        line.firstCell = m_print.cells.size();
        line.firstPicture = m_print.pictures.size();
        line.firstCode = m_print.codes.size();
        m_print.lines.append(line);
        m_print.length = qMax(m_print.length, lineTop + height);
        return m_print.lines.last();
    }

    Print m_print;
};

inline Layout layoutOf(const QVector<Print> &pieces)
{
    return Layout(pieces, paperOf());
}

inline QImage drawn(const Print &piece, int scale = 1)
{
    return pictureOf(layoutOf({piece}), scale);
}

/// A place of the piece in the picture.
inline QRect at(int left, int y, int width, int height)
{
    return {margin + left, top + y, width, height};
}

inline QImage part(const QImage &picture, const QRect &rect)
{
    return picture.copy(rect);
}

/// Pixels that are black in one and white in the other, by their half.
inline int differing(const QImage &one, const QImage &other)
{
    return differingPixels(one, other, 100);
}

}  // namespace printbench
