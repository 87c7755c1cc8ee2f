#pragma once

#include "interpreter/lineitems_p.h"
#include "printerslib/drivers/paper.h"

namespace printerslib::drivers {

/// The paper under the head, and the pieces that were cut off it.
class PaperRoll
{
public:
    /// @param blank a paper that is still empty: its width, resolution and cell
    explicit PaperRoll(const Paper &blank);

    /// Dots from the beginning of the piece to the head.
    int top() const { return m_top; }
    /// Dots that the paper has moved, over all pieces; what is fed back is taken off.
    qint64 fed() const { return m_fedBefore + m_top; }
    /// Whether the paper is at its longest before so many dots are printed, but not yet.
    bool endsWithin(int dots) const
    {
        return m_top < Paper::longest && dots > Paper::longest - m_top;
    }
    /// The command whose effects come now, for what is told of it.
    void setOffset(qint64 offset);

    /// Prints where the head is, and feeds. Of pictures that are taller than what is left of the
    /// paper the upper part is printed.
    /// @param height of what is printed
    /// @param advance dots to the next line's top
    void print(Paper::Line::Kind kind, const LineItems &items, int height, int advance,
               bool isWrapped = false);
    /// @param spacing dots that a reader takes for a line
    void feed(int dots, int spacing);
    void feedBack(int dots);

    void addEvent(Paper::Event event);
    void addEvent(Paper::Event::Kind kind, const QString &text);
    void note(const QString &text) { addEvent(Paper::Event::Note, text); }

    /// Cuts at a place of the piece. What is printed below it belongs to the next one. A cut with
    /// nothing above it is an event only.
    void cut(Paper::Event::Kind kind, int place);
    /// The pieces that were cut since the last call.
    QVector<Paper> takePieces();
    /// What is left, cut or not, unless it is empty.
    QVector<Paper> finish();

    /// As many notes a piece of paper keeps; one more says that there were more.
    static constexpr int mostNotes = 1000;

private:
    bool hasRoomFor(int dots);
    void append(Paper::Line::Kind kind, const LineItems &items, int height, int advance,
                bool isWrapped);
    void startPiece();
    int firstLineBelow(int place) const;
    void cutOff(int place, int lineCount);

    const Paper m_blank;
    Paper m_paper;
    QVector<Paper> m_pieces;
    qint64 m_offset = 0;
    bool m_hasFirstByte = false;
    int m_top = 0;
    qint64 m_fedBefore = 0;  ///< up to the beginning of the piece
    int m_printedEnd = 0;    ///< bottom of the lowest line that isn't blank
    int m_looseDots = 0;     ///< fed, but less than a line
    int m_notes = 0;
};

}  // namespace printerslib::drivers
