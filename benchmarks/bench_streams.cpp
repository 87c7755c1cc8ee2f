// Printer streams of receipts of 20 lines, read.
//
//   to_text/ENCODER     a stream that another's encoder made, to the lines that stand on the paper;
//                       "seconds_per_10000" is what 10,000 of them take
//   stream_to_picture   a stream, to a PNG of its paper
//   document_to_picture the same receipt as a printable document, to the PNG of "receipt preview"

#include <QBuffer>
#include <QFile>

#include "application.h"
#include "frame.h"
#include "layout.h"
#include "picture.h"
#include "printerdocs/printerdocumentformatter.h"
#include "printerslib/drivers/codepage.h"
#include "printerslib/drivers/printerprofile.h"
#include "printerslib/drivers/printlayout.h"
#include "printerslib/drivers/streaminterpreter.h"
#include "printerslib/drivers/symbologydrawer.h"
#include "receipt/sale.h"
#include "typeface.h"

using namespace printerslib;

namespace {

constexpr double receiptsPerSecond = 10'000;
constexpr int lines = 20;
constexpr int linesBesideItems = 16;

const char *const model = "CITIZEN_PPU_700";
constexpr int codePage = 17;  // CP866

struct Foreign
{
    const char *encoder;
    const char *file;
    const char *model;
};

constexpr Foreign foreignStreams[] = {
    {"receiptline", "receiptline-epson-twenty.bin", "GENERAL_EPSON_PROTOCOL"},
    {"receipt-printer-encoder", "encoder-epson-twenty.bin", "GENERAL_EPSON_PROTOCOL"},
    {"node-thermal-printer", "thermal-epson-twenty.bin", "GENERAL_EPSON_PROTOCOL"},
};

QByteArray contentOf(const QString &name)
{
    QFile file(QStringLiteral(PRINTERSLIB_STREAMS "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
    return file.readAll();
}

drivers::PrinterProfile profileOf(const char *id)
{
    return *drivers::PrinterProfile::forModel(QString::fromLatin1(id));
}

QString textOf(const QByteArray &stream, const drivers::PrinterProfile &profile)
{
    QString text;
    for (const drivers::Paper &paper : drivers::StreamInterpreter::papersOf(stream, profile))
        text += paper.toText();
    return text;
}

void addToText(const Foreign &foreign)
{
    const QByteArray stream = contentOf(QString::fromLatin1(foreign.file));
    const drivers::PrinterProfile profile = profileOf(foreign.model);
    frame::add(std::string("to_text/") + foreign.encoder,
               [stream, profile](benchmark::State &state) {
                   for (auto _ : state)
                       benchmark::DoNotOptimize(textOf(stream, profile));
                   state.counters["seconds_per_10000"] = benchmark::Counter(
                       1 / receiptsPerSecond,
                       benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
               });
}

/// The receipt's lines, with an "e" for each letter that the printer lacks.
QStringList receiptLines(const drivers::CodePage &page)
{
    const receipt::Sale sale = receipt::makeSale(lines - linesBesideItems);
    PrinterDocumentFormatter formatter(0, nullptr);
    formatter.setTemplate(receipt::indexedTemplate(sale));
    QStringList texts = formatter.toPlainText(receipt::indexedDocument(sale), receipt::columns);
    for (QString &text : texts) {
        for (QChar &character : text) {
            if (!page.byteOf(character.unicode()))
                character = QLatin1Char('e');
        }
    }
    return texts;
}

/// All that the two pictures are made of.
struct Drawing
{
    Drawing()
        : page(*drivers::CodePage::forName(profile.codePages().value(codePage))),
          texts(receiptLines(page)),
          stream(streamOf(texts, page)),
          document(PrinterDocumentFormatter(0, nullptr)
                       .plainTextToTextPrinterDocument(texts.join(QLatin1Char('\n'))))
    {
        QString error;
        if (!typeface.load(receiptpreview::Typeface::defaultFolder(), &error))
            qFatal("%s", qPrintable(error));
    }

    static QByteArray streamOf(const QStringList &texts, const drivers::CodePage &page);
    QByteArray pngOf(const receiptpreview::Layout &layout) const;
    QByteArray pngOfStream() const;
    QByteArray pngOfDocument() const;

    const drivers::PrinterProfile profile = profileOf(model);
    const drivers::CodePage page;
    const QStringList texts;
    const QByteArray stream;
    const TextPrinterDocument document;
    const receiptpreview::Paper paper{
        receiptpreview::catalogueModel(QString::fromLatin1(model)).value(), 0};
    const drivers::PrintTarget target{
        *drivers::PrintTarget::forModel(QString::fromLatin1(model), 0)};
    const drivers::SymbologyDrawer codes;
    receiptpreview::Typeface typeface;
};

QByteArray Drawing::streamOf(const QStringList &texts, const drivers::CodePage &page)
{
    QByteArray stream("\x1B@\x1Bt");
    stream.append(static_cast<char>(codePage));
    for (const QString &text : texts) {
        for (const QChar character : text)
            stream.append(static_cast<char>(*page.byteOf(character.unicode())));
        stream.append('\n');
    }
    return stream;
}

QByteArray Drawing::pngOf(const receiptpreview::Layout &layout) const
{
    QBuffer buffer;
    QString error;
    if (!buffer.open(QIODevice::WriteOnly) ||
        !receiptpreview::writePng(
            layout, typeface, 1, buffer, [](int, int) {}, &error))
        qFatal("%s", qPrintable(error));
    return buffer.data();
}

QByteArray Drawing::pngOfStream() const
{
    return pngOf(
        receiptpreview::Layout(drivers::StreamInterpreter::papersOf(stream, profile), paper));
}

QByteArray Drawing::pngOfDocument() const
{
    const auto print = drivers::PrintLayout::of(document, target, {}, codes);
    return pngOf(
        receiptpreview::Layout(print, document.prevTicketAction(), document.currentTicketAction()));
}

QByteArray utf8Of(const QStringList &texts)
{
    return (texts.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

}  // namespace

int main(int argc, char **argv)
{
    const auto application = receiptpreview::makeApplication(argc, argv, true);
    frame::setWarnings(false);
    for (const Foreign &foreign : foreignStreams)
        addToText(foreign);
    const Drawing drawing;
    frame::add("stream_to_picture", [&drawing](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(drawing.pngOfStream());
    });
    frame::add("document_to_picture", [&drawing](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(drawing.pngOfDocument());
    });
    return frame::run(argc, argv,
                      {{"stream_to_picture", utf8Of(drawing.texts),
                        textOf(drawing.stream, drawing.profile).toUtf8()}});
}
