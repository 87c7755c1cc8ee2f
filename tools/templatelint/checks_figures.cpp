#include "analysis.h"
#include "checks.h"
#include "figures.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "substitution.h"
#include "sums.h"

// Rules about figures of the document that are others on paper.

namespace templatelint {

namespace {

/// Whether a tag's value would be seen if it weren't one that makes its group go.
bool wouldShow(const TemplateLine &line, const AttributeTag &tag, Values &values)
{
    const auto valueOf = [&](const QString &inner) {
        return inner == tag.inner ? std::optional<QString>(QStringLiteral("x"))
                                  : values.ofTag(inner);
    };
    return fill(line.text, valueOf).text.origins.contains(Text::standIn(line.offsetOf(tag)));
}

bool concernsThePaper(const Piece &piece, const TemplateLine &line, const AttributeTag &tag,
                      const FigureVerdict &verdict, Values &values)
{
    if (piece.isShown(line.offsetOf(tag)))
        return true;
    return verdict.fault == FigureVerdict::ReadAsNumber && piece.isPrinted(line.offsetOf(tag)) &&
           templates::vanishesWithItsGroup(values.ofTag(tag.inner).value_or(QString())) &&
           wouldShow(line, tag, values);
}

void reportFigures(const Analysis &analysis, FigureVerdict::Fault fault, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.filled || piece.filled->endless)
            continue;
        for (const TemplateLine &line : piece.lines) {
            for (const AttributeTag &tag : line.tags) {
                const FigureVerdict verdict = figureVerdictOf(tag, *analysis.values());
                if (verdict.fault == fault &&
                    concernsThePaper(piece, line, tag, verdict, *analysis.values()))
                    report.add(line.offsetOf(tag), verdict.message);
            }
        }
    }
}

}  // namespace

void checkSums(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.filled || piece.filled->endless)
            continue;
        const QVector<WrongSum> wrong = wrongSumsOf(piece, *analysis.values());
        for (const WrongSum &sum : wrong)
            report.add(sum.offset, sum.message);
    }
}

void checkLostSigns(const Analysis &analysis, Report &report)
{
    reportFigures(analysis, FigureVerdict::LostSign, report);
}

void checkTextsAsNumbers(const Analysis &analysis, Report &report)
{
    reportFigures(analysis, FigureVerdict::ReadAsNumber, report);
}

void checkChangedFigures(const Analysis &analysis, Report &report)
{
    reportFigures(analysis, FigureVerdict::Changed, report);
}

}  // namespace templatelint
