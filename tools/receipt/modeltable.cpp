#include "modeltable.h"

#include <printerslib/drivers/printlayout.h>
#include <printerslib/drivers/symbologydrawer.h>

#include <QJsonArray>
#include <QMap>
#include <algorithm>

#include "bbcode.h"
#include "filling.h"
#include "linewidth.h"
#include "lintpaper.h"
#include "places.h"
#include "printedlines.h"
#include "printerdocs/bbcodeparser.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printoptions.h"
#include "support.h"

namespace tool {

namespace {

using printerslib::drivers::PrintLayout;
using printerslib::drivers::PrintNote;
using printerslib::drivers::PrintOptions;
using printerslib::drivers::PrintTarget;
using printerslib::drivers::SymbologyDrawer;

constexpr int mostBbSymbols = 255;

/// The document that is printed, and where its lines stand in the template.
class TriedReceipt
{
public:
    TriedReceipt(const QStringList &lines, const templatelint::Options &options,
                 const QString &images)
        : m_isBbCode(templatelint::isBbCode(lines)), m_images(images)
    {
        if (m_isBbCode) {
            m_text = templatelint::BbCode(lines, options).text().characters;
            m_text.remove(templatelint::valueSign());
            const QStringList filled = m_text.split(QLatin1Char('\n'));
            // A value of several lines is a rarity that only the paper's lines are told of.
            const TextPrinterDocument document = bbDocument(mostBbSymbols);
            m_places = filled.size() == lines.size()
                           ? Places(document,
                                    [filled, document] {
                                        return templatelint::printedLinesOfBbCode(
                                            filled, document.blocks());
                                    })
                           : Places(document);
            return;
        }
        const TemplateAndDocument source{lines.join(QLatin1Char('\n')),
                                         options.document.value_or(PrinterDocument())};
        PrinterDocumentFormatter formatter(0, nullptr);
        formatter.setTemplate(source.text);
        m_document = formatter.toTextPrinterDocument(source.document);
        m_places = Places(m_document, [source] { return printedLinesOf(source); });
    }

    TextPrinterDocument documentFor(const PrintTarget &target) const
    {
        if (!m_isBbCode)
            return m_document;
        return bbDocument(std::min(target.symbolsPerLine(), mostBbSymbols));
    }
    const Places &places() const { return m_places; }

private:
    TextPrinterDocument bbDocument(int symbols) const
    {
        BbCodeParser parser(nullptr);
        parser.setSymbolsPerLine(static_cast<unsigned char>(symbols));
        parser.setImagesPath(m_images);
        parser.parseText(m_text);
        return parser.document();
    }

    bool m_isBbCode;
    QString m_images;
    QString m_text;
    TextPrinterDocument m_document;
    Places m_places;
};

/// The lines that the checker finds too wide for a paper.
QVector<int> wrappedLines(const QVector<templatelint::Finding> &findings)
{
    QVector<int> lines;
    for (const templatelint::Finding &finding : findings) {
        const QLatin1String rule(finding.rule->name);
        const bool isWide = rule == QLatin1String("wide-line") ||
                            rule == QLatin1String("broken-word") ||
                            rule == QLatin1String("repeated-tab");
        if (isWide && (lines.isEmpty() || lines.constLast() != finding.line))
            lines.append(finding.line);
    }
    return lines;
}

/// Large text that is none, by its lines.
QStringList smallTextsOf(const QVector<templatelint::Finding> &findings)
{
    QStringList texts;
    for (const templatelint::Finding &finding : findings) {
        if (QLatin1String(finding.rule->name) == QLatin1String("small-large-text"))
            texts.append(QStringLiteral("line %1: %2").arg(finding.line).arg(finding.message));
    }
    return texts;
}

/// Each loss once, with the places that it is at.
QStringList lossesOf(const PrintLayout &layout, const Places &places)
{
    QStringList texts;
    QMap<QString, QStringList> placesOfTexts;
    for (const PrintNote &note : layout.notes) {
        if (!note.isLoss)
            continue;
        if (!texts.contains(note.text))
            texts.append(note.text);
        if (note.block == 0)
            continue;
        const QString place = places.textOf(note.block, note.line);
        if (!placesOfTexts[note.text].contains(place))
            placesOfTexts[note.text].append(place);
    }
    if (!layout.error.isEmpty())
        texts.append(places.inMessage(layout.error));
    for (QString &text : texts) {
        const QStringList found = placesOfTexts.value(text);
        if (!found.isEmpty())
            text = QStringLiteral("%1: %2").arg(found.join(QStringLiteral(", ")), text);
    }
    return texts;
}

PaperVerdict verdictOn(const ChosenPaper &paper, const QStringList &lines,
                       const templatelint::Options &options, const PrintOptions &printOptions,
                       const TriedReceipt &receipt)
{
    static const SymbologyDrawer codes;
    const PrintTarget target = targetOf(*paper.model, paper);
    templatelint::Options own = options;
    own.paper = lintPaperOf(paper);
    own.progress = nullptr;
    own.pictureOf = nullptr;
    const TextPrinterDocument document = receipt.documentFor(target);
    const PrintLayout layout = PrintLayout::of(document, target, printOptions, codes);
    const auto findings = templatelint::lint(lines, own);
    return {paper.model->id(), target.paper().caption(), target.symbolsPerLine(),
            wrappedLines(findings), lossesOf(layout, receipt.places()) + smallTextsOf(findings)};
}

QString lineNumbersOf(const QVector<int> &lines)
{
    QStringList numbers;
    for (const int line : lines)
        numbers.append(QString::number(line));
    return numbers.isEmpty() ? QStringLiteral("-") : numbers.join(QStringLiteral(", "));
}

}  // namespace

QVector<PaperVerdict> verdictsOf(const QStringList &lines, const templatelint::Options &options,
                                 const printerslib::drivers::PrinterModels &models,
                                 const QString &images,
                                 const QHash<QString, PrintOptions> &printOptions,
                                 const std::function<void(qint64 done, qint64 all)> &progress)
{
    const TriedReceipt receipt(lines, options, images);
    QVector<PaperVerdict> verdicts;
    const QStringList ids = models.modelIds();
    int done = 0;
    for (const QString &id : ids) {
        const auto model = findModel(models, id);
        const QList<int> papers = model ? model->paperTypes().keys() : QList<int>();
        for (const int paper : papers)
            verdicts.append(verdictOn({models, model, paper, 0}, lines, options,
                                      printOptions.value(id), receipt));
        progress(++done, ids.size());
    }
    return verdicts;
}

void printVerdicts(const QVector<PaperVerdict> &verdicts)
{
    QVector<QStringList> rows{{QStringLiteral("Model"), QStringLiteral("Paper"),
                               QStringLiteral("Characters"), QStringLiteral("Wrapped lines"),
                               QStringLiteral("Loses")}};
    for (const PaperVerdict &verdict : verdicts)
        rows.append({verdict.model, verdict.paper, QString::number(verdict.characters),
                     lineNumbersOf(verdict.wrapped),
                     verdict.losses.isEmpty() ? QStringLiteral("-")
                                              : verdict.losses.join(QStringLiteral("; "))});
    QVector<int> widths(rows.constFirst().size(), 0);
    for (const QStringList &row : qAsConst(rows)) {
        for (int i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths.at(i), row.at(i).size());
    }
    for (const QStringList &row : qAsConst(rows)) {
        QString line;
        for (int i = 0; i + 1 < row.size(); ++i)
            line += row.at(i).leftJustified(widths.at(i)) + QStringLiteral("  ");
        print(line + row.constLast());
    }
}

QJsonObject jsonOf(const QString &file, const PaperVerdict &verdict)
{
    QJsonArray wrapped;
    for (const int line : verdict.wrapped)
        wrapped.append(line);
    return {{QStringLiteral("file"), file},
            {QStringLiteral("model"), verdict.model},
            {QStringLiteral("paper"), verdict.paper},
            {QStringLiteral("characters"), verdict.characters},
            {QStringLiteral("wrapped"), wrapped},
            {QStringLiteral("losses"), QJsonArray::fromStringList(verdict.losses)}};
}

}  // namespace tool
