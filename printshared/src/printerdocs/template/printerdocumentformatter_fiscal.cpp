#include "printerdocs/printerdocumentformatter.h"

const QList<QPair<CheckBlockType, QString>> PrinterDocumentFormatter::PARTS = {
    {FiscalHeader, QStringLiteral("<FISCAL_HEADER>")},
    {FiscalBody, QStringLiteral("<FISCAL_BODY>")},
    {FiscalOperations, QStringLiteral("<FISCAL_OPERATIONS>")},
    {FiscalSummary, QStringLiteral("<FISCAL_SUMMARY>")},
    {FiscalQr, QStringLiteral("<FISCAL_QR>")},
    {FiscalFooter, QStringLiteral("<FISCAL_FOOTER>")},
};

namespace {

using Formatter = QSharedPointer<PrinterDocumentFormatter>;

/// What a marker divides a text into.
struct Division
{
    QStringList before;
    QStringList after;
    bool seen = false;
};

void appendUnlessBlank(QStringList &lines, const QString &text)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.isEmpty())
        lines.append(trimmed);
}

/// The marker itself is dropped wherever it stands; the first one divides. What stands beside it on
/// its line becomes a line of its own.
/// Intended: the line is cut where the marker stands in its upper-cased copy, in which one letter
/// may have become two or three; receipts in the field are cut so (test splitAtOneMarker).
Division divideAt(const QString &marker, const QStringList &lines)
{
    Division division;
    for (const QString &line : lines) {
        QStringList &current = division.seen ? division.after : division.before;
        const int index = line.toUpper().indexOf(marker);
        if (index < 0) {
            current.append(line);
            continue;
        }
        appendUnlessBlank(current, line.left(index));
        appendUnlessBlank(division.after, line.mid(index + marker.size()));
        division.seen = true;
    }
    return division;
}

/// A stretch of the template on its way through the list of markers: text, or the place of a
/// section.
struct Piece
{
    bool isText;
    CheckBlockType section;
    QStringList lines;
};

/// Cuts every text among the pieces at the marker; true if it was found in any of them.
bool cutPieces(QList<Piece> &pieces, CheckBlockType section, const QString &marker)
{
    bool seen = false;
    QList<Piece> cut;
    for (const Piece &piece : qAsConst(pieces)) {
        if (!piece.isText) {
            cut.append(piece);
            continue;
        }
        const Division division = divideAt(marker, piece.lines);
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

}  // namespace

/// A piece of another formatter's template. Intended: the folder of special symbols is the default
/// one again, clients set it (test piecesTakeMarginAndParentButNotTheSymbolFolder).
PrinterDocumentFormatter::PrinterDocumentFormatter(const PrinterDocumentFormatter &model,
                                                   const QStringList &lines)
    : PrinterDocumentFormatter(model.m_leftMargin, model.parent())
{
    m_templateLines = lines;
}

QList<Formatter> PrinterDocumentFormatter::splitByFiscalInfo(const QString &marker)
{
    const Division division = divideAt(marker, m_templateLines);
    if (division.before.isEmpty() && division.after.isEmpty())
        return {};
    QList<Formatter> result{Formatter(new PrinterDocumentFormatter(*this, division.before))};
    if (!division.after.isEmpty())
        result.append(Formatter(new PrinterDocumentFormatter(*this, division.after)));
    return result;
}

QList<QPair<CheckBlockType, Formatter>> PrinterDocumentFormatter::splitByFiscalParts(
    bool &found, QList<QPair<CheckBlockType, QString>> parts)
{
    QList<Piece> pieces;
    if (!m_templateLines.isEmpty() || parts.isEmpty())
        pieces.append({true, Unsplit, m_templateLines});
    for (const auto &part : qAsConst(parts)) {
        if (cutPieces(pieces, part.first, part.second))
            found = true;
    }
    QList<QPair<CheckBlockType, Formatter>> result;
    for (const Piece &piece : qAsConst(pieces)) {
        Formatter formatter;
        if (piece.isText)
            formatter.reset(new PrinterDocumentFormatter(*this, piece.lines));
        result.append({piece.section, formatter});
    }
    return result;
}
