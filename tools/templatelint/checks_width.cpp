#include <algorithm>

#include "analysis.h"
#include "attributes.h"
#include "bbcode.h"
#include "checks.h"
#include "linewidth.h"
#include "words.h"

// Rules about lines that the paper is too narrow for.

namespace templatelint {

namespace {

/// What the paper has, in characters of a line's font.
QString roomOf(const Printed &line, const LineWidth &width, const Paper &paper)
{
    const QString count = QString::number(width.charactersPerRow());
    if (paper.name.isEmpty())
        return Words::tr(" of %1").arg(count);
    const PaperFont &font = fontAt(line, 0, paper);
    const bool isUsual = font.name == paper.fonts.constFirst().name;
    const QString room = Words::tr(", and %1 has %2").arg(paper.name, count);
    return isUsual ? room : room + Words::tr(" in its font %1").arg(font.name);
}

QString shown(const QString &text)
{
    return clipped(text)
        .replace(QLatin1Char('\t'), QLatin1Char(' '))
        .replace(valueSign(), QStringLiteral("..."));
}

QString takenText(const Printed &line, const LineWidth &width, const Paper &paper)
{
    const bool isWhole = !line.text.characters.contains(valueSign());
    const QString taken =
        isWhole ? Words::tr("takes %n characters", nullptr, width.characters())
                : Words::tr("takes at least %n characters", nullptr, width.characters());
    return taken + roomOf(line, width, paper);
}

/// Of a row or line those characters that stand around its end or begin.
constexpr int mostAround = 20;

QString brokenMessage(const Printed &line, const LineWidth &width, const BrokenWord &word,
                      const Paper &paper)
{
    const QString &text = line.text.characters;
    const int begin = std::max({0, word.begin, word.place - mostAround});
    const QString before = text.mid(begin, word.place - begin);
    const int rest = text.indexOf(QLatin1Char(' '), word.end);
    const int end = std::min(rest < 0 ? text.size() : rest, word.place + mostAround);
    return Words::tr(
               "the paper ends inside \"%1\": \"%2\" stands on one row and \"%3\" on "
               "the next; the line \"%4\" %5")
        .arg(shown(text.mid(word.begin, word.end - word.begin)), shown(before),
             shown(text.mid(word.place, std::max(word.end, end) - word.place)), shown(text),
             takenText(line, width, paper));
}

/// A number that no row has room for breaks on any.
bool fitsARow(const BrokenWord &word, const LineWidth &width)
{
    return word.end - word.begin <= width.charactersPerRow();
}

/// Lines that are too wide, each with the words that break; without a document those for which
/// values are no excuse.
template <typename Visitor>
void forEachWideLine(const QVector<Printed> &lines, bool isFilled, const Options &options,
                     Visitor visit)
{
    for (const Printed &line : lines) {
        const bool hasValue = !isFilled && line.text.characters.contains(valueSign());
        if (hasValue && line.hasBrackets)
            continue;
        const LineWidth width(line, *options.paper, options.form,
                              isFilled ? LineWidth::Known : LineWidth::CountNothing);
        if (!width.isTooWide() || line.text.firstOffset() == Text::nowhere)
            continue;
        const auto words =
            hasValue ? QVector<BrokenWord>() : brokenWords(line.text.characters, width.breaks());
        visit(line, width, words);
    }
}

template <typename Visitor>
void forEachWideLine(const Analysis &analysis, Visitor visit)
{
    const Options &options = analysis.options();
    if (!options.paper || options.form == Form::Html)
        return;
    for (const Piece &piece : analysis.pieces()) {
        const Road &road = piece.filled ? *piece.filled : piece.blank;
        forEachWideLine(road.lines, piece.filled.has_value(), options, visit);
    }
}

template <typename Visitor>
void forEachWideLine(const BbCode &text, Visitor visit)
{
    if (text.options().paper && text.options().form != Form::Html)
        forEachWideLine(text.lines(), text.options().document.has_value(), text.options(), visit);
}

template <typename Checked>
void reportWideLines(const Checked &source, Report &report)
{
    forEachWideLine(
        source, [&](const Printed &line, const LineWidth &width, const QVector<BrokenWord> &words) {
            if (words.isEmpty())
                report.addEachToLine(line.text.firstOffset(),
                                     Words::tr("the line \"%1\" %2")
                                         .arg(shown(line.text.characters),
                                              takenText(line, width, *source.options().paper)));
        });
}

template <typename Checked>
void reportBrokenWords(const Checked &source, Report &report)
{
    const bool hasData = source.options().document.has_value();
    forEachWideLine(
        source, [&](const Printed &line, const LineWidth &width, const QVector<BrokenWord> &words) {
            for (const BrokenWord &word : words) {
                const int offset = Text::offsetOf(line.text.origins.at(word.place));
                const bool isWrongFigure = hasData && word.isNumber && fitsARow(word, width);
                report.addEachAs(isWrongFigure ? Severity::Error : Severity::Warning,
                                 offset == Text::nowhere ? line.text.firstOffset() : offset,
                                 brokenMessage(line, width, word, *source.options().paper));
            }
        });
}

}  // namespace

void checkLineWidth(const Analysis &analysis, Report &report)
{
    reportWideLines(analysis, report);
}

void checkBrokenWords(const Analysis &analysis, Report &report)
{
    reportBrokenWords(analysis, report);
}

void checkBbLineWidth(const BbCode &text, Report &report)
{
    reportWideLines(text, report);
}

void checkBbBrokenWords(const BbCode &text, Report &report)
{
    reportBrokenWords(text, report);
}

}  // namespace templatelint
