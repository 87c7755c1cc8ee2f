// What a printer burns is what the preview shows: the encoder's bytes, read back and drawn, have
// the same dots as the laid out document, whatever the document, the model, its paper and its font.
#include <rapidcheck.h>

#include <QtTest>
#include <algorithm>
#include <cstring>

#include "burntdots.h"
#include "exampledocuments.h"
#include "printabledocuments.h"
#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/glyphreader.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/streamreader.h"
#include "printerslib/drivers/symbologydrawer.h"

using namespace printerslib::drivers;
using Printed = printerslib::drivers::Paper;

namespace {

const SymbologyDrawer &codes()
{
    static const SymbologyDrawer drawer;
    return drawer;
}

/// A model with a paper and a font, by its name in messages.
struct NamedTarget
{
    QString name;
    PrintTarget target;
};

const QVector<NamedTarget> &targets()
{
    static const QVector<NamedTarget> all = [] {
        QVector<NamedTarget> found;
        for (const PrinterInfo &record : PrinterInfo::fromResources()) {
            const QList<int> papers = record.paperTypes().keys();
            const QList<FontInfo> fonts = record.fontTypes();
            for (const int paper : papers) {
                for (const FontInfo &font : fonts)
                    found.append({QStringLiteral("%1 paper %2 font %3")
                                      .arg(record.id())
                                      .arg(paper)
                                      .arg(font.id()),
                                  *PrintTarget::forModel(record.id(), paper, font.id())});
            }
        }
        return found;
    }();
    return all;
}

/// A document on its way: laid out, encoded, and printed.
struct Printing
{
    PrintLayout layout;
    EncodedDocument encoded;
    QVector<Printed> papers;
};

QVector<Printed> papersOf(const QByteArray &stream, const PrintTarget &target)
{
    StreamInterpreter::Options options;
    options.paperDots = target.lineDots();
    options.codes = &codes();
    const GlyphReader letters(target.profile());
    options.letters = &letters;
    return StreamInterpreter::papersOf(stream, target.profile(), options);
}

Printing print(const TextPrinterDocument &document, const PrintTarget &target,
               const PrintOptions &options)
{
    const PrintLayout layout = PrintLayout::of(document, target, options, codes());
    const EncodedDocument encoded = DocumentEncoder(target, options).encode(document, layout);
    return {layout, encoded, papersOf(encoded.bytes, target)};
}

/// The paper with the document on it. The cut and the ejection of the ticket before leave papers
/// without anything, and so does what hangs in the printer at the end.
QVector<Printed> printedPapers(const QVector<Printed> &papers)
{
    QVector<Printed> printed;
    for (const Printed &paper : papers) {
        const bool isBlank =
            paper.codes.isEmpty() &&
            std::all_of(paper.lines.begin(), paper.lines.end(), [](const Printed::Line &line) {
                return line.cellCount + line.pictureCount + line.codeCount == 0;
            });
        if (!isBlank)
            printed.append(paper);
    }
    return printed;
}

QString savedPicture(const burntdots::Strip &shown, const burntdots::Strip &burnt)
{
    const QString folder = qEnvironmentVariable("PRINT_LAW_PICTURES");
    if (folder.isEmpty())
        return {};
    static int number = 0;
    const QString name = QStringLiteral("%1/%2.png").arg(folder).arg(++number);
    burntdots::sideBySide(shown, burnt).save(name);
    return QStringLiteral(", shown and burnt in ") + name;
}

/// What the printer doesn't do as the stream asks; the reader of the bytes tells it. Documents may
/// ring a bell that not all printers have.
QStringList printersNotes(const QVector<Printed> &papers)
{
    const QString bell = QStringLiteral("BEL isn't known");
    QStringList notes;
    for (const Printed &paper : papers) {
        for (const Printed::Event &event : paper.events) {
            if (event.kind == Printed::Event::Note && event.text != bell)
                notes.append(QStringLiteral("byte %1: %2").arg(event.offset).arg(event.text));
        }
    }
    return notes;
}

/// What keeps marks from leading to commands and texts of the stream; empty if they all do.
QString strayMark(const EncodedDocument &encoded, const PrinterProfile &profile)
{
    QSet<int> beginnings{encoded.bytes.size()};
    for (const StreamCommand &command : StreamReader::commandsOf(encoded.bytes, profile))
        beginnings.insert(int(command.offset));
    int last = 0;
    for (const EncodedDocument::Mark &mark : encoded.marks) {
        if (mark.offset < last || !beginnings.contains(mark.offset))
            return QStringLiteral("the mark of block %1 is at byte %2, behind %3")
                .arg(mark.block)
                .arg(mark.offset)
                .arg(last);
        last = mark.offset;
    }
    return {};
}

/// What of a row doesn't fit the line or its own height; empty if all does.
QString rowFault(const PrintLayout &layout, const PrintLayout::Row &row)
{
    const int line = layout.target.lineDots();
    int width = 0;
    int height = 0;
    switch (row.kind) {
        case PrintLayout::Row::Text:
            for (int i = row.first; i < row.first + row.count; ++i) {
                const QSize cell = layout.sizeOf(layout.cells.at(std::size_t(i)));
                width += cell.width();
                height = qMax(height, cell.height());
            }
            height = row.count == 0 ? row.height : height;
            break;
        case PrintLayout::Row::Picture:
            width = row.left + layout.pictures.at(row.first).size.width();
            height = layout.pictures.at(row.first).size.height();
            break;
        case PrintLayout::Row::Code: {
            const Printed::Code &code = layout.codes.at(row.first);
            width = row.left + code.modules.width() * code.module.width();
            height = code.modules.height() * code.module.height();
            break;
        }
        case PrintLayout::Row::Feed:
            height = qMax(0, row.height);
            break;
        default:
            break;
    }
    const bool fits = row.left >= 0 && width <= line && height == row.height && row.feed >= 0;
    return fits ? QString()
                : QStringLiteral("a row of kind %1, %2 x %3 at %4, in %5 x %6")
                      .arg(row.kind)
                      .arg(width)
                      .arg(height)
                      .arg(row.left)
                      .arg(line)
                      .arg(row.height);
}

QString layoutFault(const PrintLayout &layout)
{
    std::size_t cells = 0;
    for (const PrintLayout::Row &row : layout.rows) {
        const QString fault = rowFault(layout, row);
        if (!fault.isEmpty())
            return fault;
        if (row.kind != PrintLayout::Row::Text)
            continue;
        if (std::size_t(row.first) != cells)
            return QStringLiteral("the cells of two rows don't follow each other");
        cells += std::size_t(row.count);
    }
    return cells == layout.cells.size() ? QString() : QStringLiteral("cells beside the rows");
}

/// Where the dots differ; empty if they are the same.
QString dotsDifference(const Printing &printing, const TextPrinterDocument &document)
{
    const Layout shown(printing.layout, document.prevTicketAction(),
                       document.currentTicketAction());
    const QVector<Printed> papers = printedPapers(printing.papers);
    if (papers.size() > 1)
        return QStringLiteral("%1 pieces of paper are printed on").arg(papers.size());
    const burntdots::Strip ours = burntdots::stripOf(shown);
    if (papers.isEmpty())
        return ours.rows.isEmpty() ? QString() : QStringLiteral("nothing is printed");
    const burntdots::Strip burnt =
        burntdots::stripOf(Layout(papers, receiptpreview::Paper(printing.layout.target)));
    // Behind a cut there is what hung between head and cutter.
    const bool isCutBefore = (document.prevTicketAction() & TicketActionEveryDocument) != 0;
    if (!isCutBefore && ours.blankAbove != burnt.blankAbove)
        return QStringLiteral("%1 and %2 blank rows above")
            .arg(ours.blankAbove)
            .arg(burnt.blankAbove);
    const QString difference = burntdots::difference(ours, burnt);
    return difference.isEmpty() ? difference : difference + savedPicture(ours, burnt);
}

/// Why the law doesn't hold; empty if it does.
QString lawBreach(const TextPrinterDocument &document, const PrintTarget &target,
                  const PrintOptions &options = {})
{
    const Printing printing = print(document, target, options);
    const QString fault = layoutFault(printing.layout);
    if (!fault.isEmpty())
        return fault;
    if (printing.encoded.error != printing.layout.error)
        return QStringLiteral("the encoder says \"%1\", the layout \"%2\"")
            .arg(printing.encoded.error, printing.layout.error);
    if (!printing.encoded.error.isEmpty())
        return printing.encoded.bytes.isEmpty() ? QString()
                                                : QStringLiteral("bytes in spite of an error");
    const QStringList notes = printersNotes(printing.papers);
    if (!notes.isEmpty())
        return notes.join(QLatin1String("; "));
    const QString stray = strayMark(printing.encoded, target.profile());
    return stray.isEmpty() ? dotsDifference(printing, document) : stray;
}

bool isWrapped(const PrintLayout &layout)
{
    return std::any_of(layout.rows.begin(), layout.rows.end(),
                       [](const PrintLayout::Row &row) { return row.isWrapped; });
}

/// Lines with words, each run of blanks as one, and none at the ends: large letters take the place
/// of two, so that a printed line is filled with fewer blanks than its text.
QStringList wordsOf(const QStringList &lines)
{
    QStringList words;
    for (const QString &line : lines) {
        if (!line.simplified().isEmpty())
            words.append(line.simplified());
    }
    return words;
}

/// The text of what is printed, without what stands there for codes, pictures and cuts.
QStringList printedWords(const QVector<Printed> &papers)
{
    static const QRegularExpression text("^(?! *\\[(picture \\d|QR: |cut\\])).*");
    QStringList lines;
    for (const Printed &paper : papers)
        lines += paper.toText().split('\n').filter(text);
    return wordsOf(lines);
}

/// Where a text and what is printed differ; empty if they don't. Where a line goes on below, the
/// blanks don't count at all.
QString textDifference(const QStringList &text, const Printing &printing)
{
    // A code's line says what is in it.
    static const QRegularExpression plain("^(?!<QR>)");
    QStringList expected = wordsOf(text.filter(plain));
    QStringList printed = printedWords(printing.papers);
    if (isWrapped(printing.layout)) {
        expected = QStringList(expected.join(QString()).remove(' '));
        printed = QStringList(printed.join(QString()).remove(' '));
    }
    for (int i = 0; i < qMax(expected.size(), printed.size()); ++i) {
        if (expected.value(i) != printed.value(i))
            return QStringLiteral("\"%1\" is printed for \"%2\"")
                .arg(printed.value(i), expected.value(i));
    }
    return {};
}

/// Whether all text goes to the printer as characters, letters that the stream defines among them.
bool isRead(const PrintLayout &layout)
{
    const bool hasDots = std::any_of(layout.rows.begin(), layout.rows.end(),
                                     [](const PrintLayout::Row &row) { return row.isRaster; });
    return !hasDots && std::none_of(layout.cells.begin(), layout.cells.end(),
                                    [](const PrintLayout::Cell &cell) {
                                        const bool isSymbol =
                                            cell.drawing >= 0 && cell.character == u' ';
                                        return isSymbol || (cell.format & CharRawCode) != 0;
                                    });
}

/// Whether there are special symbols in it, which are drawn.
bool hasSymbols(const TextPrinterDocument &document)
{
    const QString text = exampledocuments::textForm(document, 0).join(QString());
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() >= 1 && c.unicode() <= 7; });
}

}  // namespace

class TestPrintLaw : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void examplesBurnWhatThePreviewShows_data()
    {
        QTest::addColumn<int>("example");
        const auto examples = exampledocuments::examples();
        for (int i = 0; i < examples.size(); ++i)
            QTest::newRow(qPrintable(examples.at(i).name)) << i;
    }
    void examplesBurnWhatThePreviewShows()
    {
        QFETCH(int, example);
        const auto &shown = exampledocuments::examples().at(example);
        for (const NamedTarget &row : targets()) {
            const QString breach =
                lawBreach(shown.document(row.target.symbolsPerLine()), row.target);
            QVERIFY2(breach.isEmpty(), qPrintable(row.name + ": " + breach));
        }
    }

    void anyDocumentBurnsWhatThePreviewShows_data()
    {
        QTest::addColumn<QString>("model");
        for (const QString &id : PrinterProfile::modelIds())
            QTest::newRow(qPrintable(id)) << id;
    }
    void anyDocumentBurnsWhatThePreviewShows()
    {
        QFETCH(QString, model);
        VERIFY_LAW([&model] {
            QVector<NamedTarget> own;
            std::copy_if(
                targets().begin(), targets().end(), std::back_inserter(own),
                [&model](const auto &row) { return row.target.profile().modelId() == model; });
            const NamedTarget &row = own.at(*rc::gen::inRange(0, own.size()));
            const TextPrinterDocument document = *printabledocuments::document();
            const PrintOptions options = printabledocuments::options(row.target);
            const QString breach = lawBreach(document, row.target, options);
            if (!breach.isEmpty())
                RC_FAIL((row.name + ": " + breach).toStdString());
        });
    }

    /// Where no row goes as dots, be it by letters of the printer or by those that are defined in
    /// it.
    void examplesReadAsTheirText_data() { examplesBurnWhatThePreviewShows_data(); }
    void examplesReadAsTheirText()
    {
        QFETCH(int, example);
        const auto &shown = exampledocuments::examples().at(example);
        int compared = 0;
        for (const NamedTarget &row : targets()) {
            const int width = row.target.symbolsPerLine();
            const TextPrinterDocument document = shown.document(width);
            const Printing printing = print(document, row.target, {});
            if (!printing.encoded.isFaithful() || !isRead(printing.layout))
                continue;
            ++compared;
            const QString difference = textDifference(
                shown.text ? shown.text(width) : exampledocuments::textForm(document, width),
                printing);
            QVERIFY2(difference.isEmpty(), qPrintable(row.name + ": " + difference));
        }
        const int width = targets().constFirst().target.symbolsPerLine();
        QVERIFY(compared > 0 || hasSymbols(shown.document(width)));
    }

    void everyCodeBurnsWhatThePreviewShows()
    {
        for (const NamedTarget &row : targets()) {
            if (!row.name.endsWith("font 0"))
                continue;
            for (const auto &code : papercodes::codeExamples()) {
                for (const ETextAlignment alignment : {AlignLeft, AlignRight, AlignCenter}) {
                    TextPrinterDocument document;
                    document.appendBlock(
                        papercodes::codeBlock(code.number, code.payload, alignment));
                    const QString breach = lawBreach(document, row.target);
                    QVERIFY2(breach.isEmpty(), qPrintable(QStringLiteral("%1 code %2: %3")
                                                              .arg(row.name)
                                                              .arg(code.number)
                                                              .arg(breach)));
                }
            }
        }
    }
};

QTEST_MAIN(TestPrintLaw)
#include "tst_print_law.moc"
