// How the cost of formatting grows. Each benchmark runs over several sizes and prints the fitted
// order; all of them are to be O(N).
//
//   documentOfLines      a receipt of N item lines, as text
//   documentToHtml       the same, as HTML
//   documentToBlocks     the same, as blocks
//   lineOfAttributes     one line of N attribute tags among text
//   lineOfZeroGroups     one line of N groups that vanish
//   lineOfMarkup         one line of N markup tags among text
//   linesWithoutTags     N lines without "<"; "copied" is the same number of lines only copied

#include "frame.h"
#include "printerdocs/printerdocumentformatter.h"

namespace {

PrinterDocument document()
{
    PrinterDocument document;
    document.setAttributes({{QStringLiteral("NAME"), QStringLiteral("Чай чёрный")},
                            {QStringLiteral("PRICE"), 12.5},
                            {QStringLiteral("ZERO"), 0}});
    return document;
}

int sizeOf(const benchmark::State &state)
{
    return static_cast<int>(state.range(0));
}

void setItemLines(PrinterDocumentFormatter &formatter, int lines)
{
    const QString line = QStringLiteral("<NAME><S><B:><PRICE,0.00><:B>[ -<ZERO>]\n");
    formatter.setTemplate(line.repeated(lines));
}

void documentOfLines(benchmark::State &state)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    setItemLines(formatter, sizeOf(state));
    const PrinterDocument values = document();
    for (auto _ : state)
        benchmark::DoNotOptimize(formatter.toPlainText(values, 42));
    state.SetComplexityN(state.range(0));
}

void documentToHtml(benchmark::State &state)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    setItemLines(formatter, sizeOf(state));
    const PrinterDocument values = document();
    for (auto _ : state)
        benchmark::DoNotOptimize(formatter.toHtml(values, true));
    state.SetComplexityN(state.range(0));
}

void documentToBlocks(benchmark::State &state)
{
    PrinterDocumentFormatter formatter(0, nullptr);
    setItemLines(formatter, sizeOf(state));
    const PrinterDocument values = document();
    for (auto _ : state)
        benchmark::DoNotOptimize(formatter.toTextPrinterDocument(values));
    state.SetComplexityN(state.range(0));
}

void fillLine(benchmark::State &state, const QString &piece)
{
    const PrinterDocumentFormatter formatter(0, nullptr);
    const PrinterDocument values = document();
    const QString line = piece.repeated(sizeOf(state));
    for (auto _ : state)
        benchmark::DoNotOptimize(formatter.processDocAttributes(line, values));
    state.SetComplexityN(state.range(0));
}

void lineOfAttributes(benchmark::State &state)
{
    fillLine(state, QStringLiteral("0123456789 <NAME>"));
}

void lineOfZeroGroups(benchmark::State &state)
{
    fillLine(state, QStringLiteral("0123456789 [a <ZERO>]"));
}

void lineOfMarkup(benchmark::State &state)
{
    const PrinterDocumentFormatter formatter(0, nullptr);
    const QString line = QStringLiteral("0123<B:>45<:B><#3>6<F2>789").repeated(sizeOf(state));
    for (auto _ : state) {
        unsigned char format = 0;
        unsigned char font = 0;
        ETextAlignment alignment = AlignLeft;
        benchmark::DoNotOptimize(formatter.formatPrintStr(line, format, font, alignment, 0));
    }
    state.SetComplexityN(state.range(0));
}

void linesWithoutTags(benchmark::State &state)
{
    const PrinterDocumentFormatter formatter(0, nullptr);
    const PrinterDocument values = document();
    const QString line = QStringLiteral("a line of a receipt that has nothing to fill in");
    for (auto _ : state) {
        for (int i = 0; i < sizeOf(state); ++i)
            benchmark::DoNotOptimize(formatter.processDocAttributes(line, values));
    }
    state.SetComplexityN(state.range(0));
}

void linesCopied(benchmark::State &state)
{
    const QString line = QStringLiteral("a line of a receipt that has nothing to fill in");
    for (auto _ : state) {
        for (int i = 0; i < sizeOf(state); ++i)
            benchmark::DoNotOptimize(QString(line.constData(), line.size()));
    }
    state.SetComplexityN(state.range(0));
}

/// A benchmark over the sizes from one to another.
void addSizes(const char *name, void (*function)(benchmark::State &), int from, int to,
              int repetitions)
{
    constexpr int step = 10;
    frame::add(name, function)
        ->RangeMultiplier(step)
        ->Range(from, to)
        ->Repetitions(repetitions)
        ->Complexity();
}

}  // namespace

int main(int argc, char **argv)
{
    const int repetitions = frame::repetitions(argc, argv, 3);  // the longest takes half a second
    addSizes("documentOfLines", documentOfLines, 100, 100000, repetitions);
    addSizes("documentToHtml", documentToHtml, 100, 100000, repetitions);
    addSizes("documentToBlocks", documentToBlocks, 100, 100000, repetitions);
    addSizes("lineOfAttributes", lineOfAttributes, 50, 50000, repetitions);
    addSizes("lineOfZeroGroups", lineOfZeroGroups, 50, 50000, repetitions);
    addSizes("lineOfMarkup", lineOfMarkup, 50, 50000, repetitions);
    addSizes("linesWithoutTags", linesWithoutTags, 1000, 100000, repetitions);
    addSizes("linesCopied", linesCopied, 1000, 100000, repetitions);
    return frame::run(argc, argv);
}
