#pragma once

#include <QList>
#include <QPair>
#include <QString>

#include "printerdocs/checkblocktype.h"

namespace templates {

// Templates are cut at fiscal markers as lists of lines. A line is a QString or has its `mid()`,
// `trimmed()` and `isEmpty()` and an overload of charactersOf().

inline const QString &charactersOf(const QString &line)
{
    return line;
}

/// What a marker divides lines into.
template <typename Lines>
struct Division
{
    Lines before;
    Lines after;
    bool seen = false;
};

template <typename Lines>
void appendUnlessBlank(Lines &lines, const typename Lines::value_type &line)
{
    const auto trimmed = line.trimmed();
    if (!trimmed.isEmpty())
        lines.append(trimmed);
}

/// The marker itself is dropped wherever it stands; the first one divides. What stands beside it on
/// its line becomes a line of its own.
/// Intended: the line is cut where the marker stands in its upper-cased copy, in which one letter
/// may have become two or three; receipts in the field are cut so (test splitAtOneMarker).
template <typename Lines>
Division<Lines> divideAt(const QString &marker, const Lines &lines)
{
    Division<Lines> division;
    for (const auto &line : lines) {
        Lines &current = division.seen ? division.after : division.before;
        const int index = charactersOf(line).toUpper().indexOf(marker);
        if (index < 0) {
            current.append(line);
            continue;
        }
        appendUnlessBlank(current, line.mid(0, index));
        appendUnlessBlank(division.after, line.mid(index + marker.size()));
        division.seen = true;
    }
    return division;
}

/// A stretch of the template on its way through the list of markers: text, or the place of a
/// section.
template <typename Lines>
struct FiscalPiece
{
    bool isText;
    CheckBlockType section;
    Lines lines;
};

/// Cuts every text among the pieces at the marker; true if it was found in any of them.
template <typename Lines>
bool cutPieces(QList<FiscalPiece<Lines>> &pieces, CheckBlockType section, const QString &marker)
{
    bool seen = false;
    QList<FiscalPiece<Lines>> cut;
    for (const FiscalPiece<Lines> &piece : qAsConst(pieces)) {
        if (!piece.isText) {
            cut.append(piece);
            continue;
        }
        const Division<Lines> division = divideAt(marker, piece.lines);
        if (!division.before.isEmpty())
            cut.append({true, Unsplit, division.before});
        if (division.seen)
            cut.append({false, section, {}});
        if (!division.after.isEmpty())
            cut.append({true, Unsplit, division.after});
        seen = seen || division.seen;
    }
    pieces = cut;
    return seen;
}

/// Cuts lines at one marker after the other.
/// @param found becomes true if there is any of them
template <typename Lines>
QList<FiscalPiece<Lines>> fiscalPieces(const Lines &lines,
                                       const QList<QPair<CheckBlockType, QString>> &parts,
                                       bool &found)
{
    QList<FiscalPiece<Lines>> pieces;
    if (!lines.isEmpty() || parts.isEmpty())
        pieces.append({true, Unsplit, lines});
    for (const auto &part : parts) {
        if (cutPieces(pieces, part.first, part.second))
            found = true;
    }
    return pieces;
}

}  // namespace templates
