#include "templatelint.h"

#include <algorithm>
#include <tuple>

#include "analysis.h"
#include "bbcode.h"
#include "printerdocs/template/symbolsline_p.h"

namespace templatelint {

namespace {

QVector<Finding> sorted(QVector<Finding> findings)
{
    // The table's order settles what stands at one place.
    const auto key = [](const Finding &finding) {
        return std::make_tuple(finding.line, finding.column, finding.rule);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&key](const Finding &a, const Finding &b) { return key(a) < key(b); });
    return findings;
}

/// What fills a BBCode text fills each of its lines, and tells no group from a tag.
QVector<Finding> lintBbCode(const QStringList &lines, const Options &options)
{
    Progress progress(options.progress, qint64(Analysis::stepsPerLine) * lines.size() + 1);
    const BbCode text(lines, options);
    Analysis analysis(lines, options, progress);
    analysis.setBbCode(text.digitsOfValues());
    QVector<Finding> findings;
    for (const Rule &rule : rules()) {
        Report report(rule, text.source(), findings);
        if (rule.checkBbCode != nullptr)
            rule.checkBbCode(text, report);
        if (rule.isOfValues)
            rule.check(analysis, report);
    }
    progress.step(qint64(Analysis::stepsPerLine) * lines.size() + 1);
    return sorted(findings);
}

}  // namespace

QVector<Finding> lint(const QStringList &lines, const Options &options)
{
    if (isBbCode(lines))
        return lintBbCode(lines, options);
    // What a rule looks at is worked out already: a few of them take as long as a step of that.
    constexpr int rulesPerStep = 4;
    const qint64 stepsPerRule = lines.size() / rulesPerStep + 1;
    Progress progress(options.progress, qint64(Analysis::stepsPerLine) * lines.size() +
                                            stepsPerRule * rules().size());
    const Analysis analysis(lines, options, progress);
    QVector<Finding> findings;
    for (const Rule &rule : rules()) {
        Report report(rule, analysis.source(), findings);
        if (rule.check != nullptr)
            rule.check(analysis, report);
        progress.step(stepsPerRule);
    }
    return sorted(findings);
}

std::optional<NamedSymbolFile> symbolFileOf(const QStringList &lines, const QString &folder)
{
    const Source source(lines);
    QVector<Text> texts = source.lines();
    const SymbolFile file = takeSymbolFile(texts, folder);
    if (file.offsets.isEmpty())
        return std::nullopt;
    const Place place = source.place(file.offsets.constLast());
    return NamedSymbolFile{place.line, place.column, file.path, file.fault};
}

std::optional<NamedSymbolFile> forbiddenSymbolFile(const QStringList &lines,
                                                   const PrinterDocument &document,
                                                   const QString &folder)
{
    const Source source(lines);
    // A client that cuts the template has each piece filled by itself.
    QVector<QVector<Text>> pieces = fiscalPieces(source.lines());
    pieces.prepend(source.lines());
    for (const QVector<Text> &piece : qAsConst(pieces)) {
        // Entries can complete the name of a file.
        QVector<Text> texts = withEntries(piece, document.entries());
        const SymbolFile file = namedSymbolFile(texts, folder);
        if (!file.exists || file.isUsable())
            continue;
        const int offset = file.offsets.constLast();
        const Place place = offset == Text::nowhere ? Place{0, 0} : source.place(offset);
        return NamedSymbolFile{place.line, place.column, file.path, file.fault};
    }
    return std::nullopt;
}

std::optional<EndlessValue> endlessValueOf(const QStringList &lines,
                                           const PrinterDocument &document, Filling filling)
{
    Values values(document);
    if (!values.leadOn())
        return std::nullopt;
    const Source source(lines);
    const bool isReceipt = filling == Filling::Receipt;
    QVector<Text> texts = source.lines();
    if (isReceipt)
        texts = unpackedLines(texts, document);
    const auto valueOf = [&values](const QString &inner) { return values.ofTag(inner); };
    for (const Text &text : qAsConst(texts)) {
        if (!text.characters.contains(QLatin1Char('<')) ||
            (isReceipt && templates::isSymbolsLine(text.characters)))
            continue;
        if (const auto endless = fill(text, valueOf).endless) {
            const Place place = source.place(endless->offset);
            return EndlessValue{place.line, place.column, endless->message};
        }
    }
    return std::nullopt;
}

}  // namespace templatelint
