#include "printerdocs/plan/templatelines_p.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerdocs/template/fiscaldivision_p.h"

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

}  // namespace

/// A piece of another formatter's template. Intended: the folder of special symbols is the default
/// one again, clients set it (test piecesTakeMarginAndParentButNotTheSymbolFolder).
PrinterDocumentFormatter::PrinterDocumentFormatter(const PrinterDocumentFormatter &model,
                                                   const QStringList &lines)
    : PrinterDocumentFormatter(model.m_leftMargin, model.parent())
{
    m_templateLines->setLines(lines);
}

QList<Formatter> PrinterDocumentFormatter::splitByFiscalInfo(const QString &marker)
{
    const auto division = templates::divideAt(marker, m_templateLines->lines());
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
    const auto pieces = templates::fiscalPieces(m_templateLines->lines(), parts, found);
    QList<QPair<CheckBlockType, Formatter>> result;
    for (const auto &piece : pieces) {
        Formatter formatter;
        if (piece.isText)
            formatter.reset(new PrinterDocumentFormatter(*this, piece.lines));
        result.append({piece.section, formatter});
    }
    return result;
}
