// Receipts for printers, from documents to bytes.
//
//   text/ITEMS     a receipt of so many items, laid out and encoded in the printer's own letters
//   codec/ITEMS    the same text in one call of QTextCodec
//   picture_20     20 lines of 48 characters, laid out, drawn and encoded as a picture;
//                  "milliseconds" is how long that takes
//   laid_out/ITEMS what of text/ITEMS is the laying out
//
// "bytes" is how many bytes come out.

#include <QTextCodec>

#include "frame.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerslib/drivers/documentencoder.h"
#include "printerslib/drivers/symbologydrawer.h"
#include "receipt/sale.h"

using namespace printerslib;

namespace {

const char *const model = "GENERAL_EPSON_PROTOCOL";
const char *const codec = "CP866";
constexpr int pictureLines = 20;
constexpr int pictureColumns = 48;
constexpr int mostPapers = 8;
constexpr int mostFonts = 8;
constexpr double millisecondsPerSecond = 1000;

/// The paper and the font of 48 characters a line.
drivers::PrintTarget target()
{
    const QString id = QString::fromLatin1(model);
    for (int paper = 0; paper < mostPapers; ++paper) {
        for (int font = 0; font < mostFonts; ++font) {
            const auto chosen = drivers::PrintTarget::forModel(id, paper, font);
            if (chosen->symbolsPerLine() == pictureColumns)
                return *chosen;
        }
    }
    qFatal("%s has no line of %d characters", model, pictureColumns);
}

drivers::PrintOptions options(bool isPicture)
{
    drivers::PrintOptions result;
    result.codec = QString::fromLatin1(codec);
    result.isPicture = isPicture;
    return result;
}

/// With a letter of the page for each that it lacks.
QStringList receiptLines(int items)
{
    const receipt::Sale sale = receipt::makeSale(items);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(receipt::indexedTemplate(sale));
    QStringList lines = formatter.toPlainText(receipt::indexedDocument(sale), receipt::columns);
    for (QString &line : lines) {
        for (QChar &character : line) {
            if (character.unicode() >= 0x80)
                character = QChar(u'\u0435');
        }
    }
    return lines;
}

QStringList fullLines()
{
    QStringList lines;
    for (int line = 0; line < pictureLines; ++line) {
        QString text;
        for (int column = 0; column < pictureColumns; ++column)
            text += QChar(u'\u0410' + (line * pictureColumns + column) % 64);
        lines += text;
    }
    return lines;
}

TextPrinterDocument documentOf(const QStringList &lines)
{
    return PrinterDocumentFormatter(0, nullptr)
        .plainTextToTextPrinterDocument(lines.join(QLatin1Char('\n')));
}

drivers::EncodedDocument encoded(const drivers::DocumentEncoder &encoder,
                                 const TextPrinterDocument &document)
{
    drivers::EncodedDocument result = encoder.encode(document);
    if (!result.isFaithful())
        qFatal("the receipt isn't printed as it is: %s", qPrintable(result.error));
    return result;
}

void addEncoding(const std::string &name, const TextPrinterDocument &document, bool isPicture)
{
    const drivers::DocumentEncoder encoder(target(), options(isPicture));
    const int bytes = encoded(encoder, document).bytes.size();
    frame::add(name, [encoder, document, bytes](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(encoder.encode(document));
        state.counters["bytes"] = bytes;
        state.counters["milliseconds"] = benchmark::Counter(
            1 / millisecondsPerSecond,
            benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    });
}

void addLayout(const std::string &name, const TextPrinterDocument &document)
{
    frame::add(name, [document](benchmark::State &state) {
        const drivers::PrintTarget paper = target();
        const drivers::PrintOptions asText = options(false);
        const drivers::SymbologyDrawer codes;
        for (auto _ : state)
            benchmark::DoNotOptimize(drivers::PrintLayout::of(document, paper, asText, codes));
    });
}

void addCodec(const std::string &name, const QStringList &lines)
{
    const QString text = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    frame::add(name, [text](benchmark::State &state) {
        const QTextCodec *const page = QTextCodec::codecForName(codec);
        for (auto _ : state)
            benchmark::DoNotOptimize(page->fromUnicode(text));
        state.counters["bytes"] = text.size();
    });
}

}  // namespace

int main(int argc, char **argv)
{
    frame::setWarnings(false);
    for (const int items : {10, 100, 1000}) {
        const QStringList lines = receiptLines(items);
        const TextPrinterDocument document = documentOf(lines);
        const std::string size = std::to_string(items);
        addEncoding("text/" + size, document, false);
        addLayout("laid_out/" + size, document);
        addCodec("codec/" + size, lines);
    }
    addEncoding("picture_20", documentOf(fullLines()), true);
    return frame::run(argc, argv);
}
