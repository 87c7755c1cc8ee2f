#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <optional>

#include "analysis.h"
#include "checks.h"
#include "figures.h"
#include "printerdocs/template/substitutiontext_p.h"
#include "signs.h"
#include "substitution.h"
#include "sums.h"

// Rules about figures of the document that are others on paper.

namespace templatelint {

namespace {

/// The figures of a piece, each tag's judged once.
class FigureCheck
{
public:
    FigureCheck(const Piece &piece, const Analysis &analysis)
        : m_piece(piece), m_analysis(analysis), m_values(*analysis.values())
    {}

    void report(FigureVerdict::Fault fault, Report &report)
    {
        for (const TemplateLine &line : m_piece.lines) {
            m_left.reset();
            for (const AttributeTag &tag : line.tags) {
                const FigureVerdict &verdict = verdictOf(tag);
                if (verdict.fault == fault && !isJudgedByItsField(line, tag) &&
                    concernsThePaper(line, tag))
                    report.add(line.offsetOf(tag), verdict.message);
            }
        }
    }

private:
    const FigureVerdict &verdictOf(const AttributeTag &tag)
    {
        const auto known = m_verdicts.constFind(tag.inner);
        return known != m_verdicts.constEnd()
                   ? *known
                   : *m_verdicts.insert(tag.inner,
                                        figureVerdictOf(tag, m_values, m_analysis.isOfBbCode()));
    }
    /// Whether a field of BBCode makes another number of a value, or gives a code the zeros back
    /// that it loses as a number.
    bool isJudgedByItsField(const TemplateLine &line, const AttributeTag &tag) const
    {
        static const QRegularExpression digits(QStringLiteral("^\\d+$"));
        const auto field = m_analysis.digitsOfFields().constFind(line.offsetOf(tag));
        const QString given = m_values.rawValue(tag.name).toString();
        return field != m_analysis.digitsOfFields().constEnd() &&
               (given.size() <= *field || !digits.match(given).hasMatch());
    }
    bool concernsThePaper(const TemplateLine &line, const AttributeTag &tag)
    {
        const int offset = line.offsetOf(tag);
        return m_piece.isShown(offset) || (vanishesAsANumber(tag.inner) &&
                                           m_piece.isPrinted(offset) && wouldBeLeft(line, offset));
    }
    /// Whether a text makes its group go, only because it is read as a number.
    bool vanishesAsANumber(const QString &inner) const
    {
        return m_verdicts.value(inner).fault == FigureVerdict::ReadAsNumber &&
               templates::vanishesWithItsGroup(m_values.ofTag(inner).value_or(QString()));
    }
    /// Whether groups would leave the value of a tag if no text was read as a number.
    bool wouldBeLeft(const TemplateLine &line, int offset)
    {
        if (!m_left)
            m_left = originsOf(fill(line.text, [this](const QString &inner) {
                                   return vanishesAsANumber(inner)
                                              ? std::optional<QString>(QStringLiteral("x"))
                                              : m_values.ofTag(inner);
                               }).text);
        return m_left->contains(Text::standIn(offset));
    }

    const Piece &m_piece;
    const Analysis &m_analysis;
    Values &m_values;
    QHash<QString, FigureVerdict> m_verdicts;
    std::optional<QSet<int>> m_left;  ///< origins of what is left of the line
};

void reportFigures(const Analysis &analysis, FigureVerdict::Fault fault, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (piece.filled && !piece.filled->endless)
            FigureCheck(piece, analysis).report(fault, report);
    }
}

/// What the template alone says of them.
void reportCodes(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        for (const TemplateLine &line : piece.lines) {
            for (const AttributeTag &tag : line.tags) {
                const QString fault = faultOfCode(tag);
                if (!fault.isEmpty() && piece.isPrinted(line.offsetOf(tag)))
                    report.addAs(Severity::Warning, line.offsetOf(tag), fault);
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
            report.addAs(sum.severity, sum.offset, sum.message);
    }
}

void checkDoubleSigns(const Analysis &analysis, Report &report)
{
    for (const Piece &piece : analysis.pieces()) {
        if (!piece.filled || piece.filled->endless)
            continue;
        for (const Printed &line : piece.filled->lines)
            reportDoubleSigns(line.text, analysis.source(), *analysis.values(), report);
    }
}

void checkLostSigns(const Analysis &analysis, Report &report)
{
    reportFigures(analysis, FigureVerdict::LostSign, report);
}

void checkTextsAsNumbers(const Analysis &analysis, Report &report)
{
    if (analysis.values() == nullptr)
        return reportCodes(analysis, report);
    reportFigures(analysis, FigureVerdict::ReadAsNumber, report);
}

void checkChangedFigures(const Analysis &analysis, Report &report)
{
    reportFigures(analysis, FigureVerdict::Changed, report);
}

}  // namespace templatelint
