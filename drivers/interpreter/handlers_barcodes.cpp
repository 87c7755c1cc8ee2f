#include <algorithm>

#include "interpreter/barcodedata_p.h"
#include "interpreter/handlers_p.h"

namespace printerslib::drivers {

namespace {

using Symbology = Paper::Symbology;

/// A barcode by GS k's m: the first seven end with a zero byte, the others carry their length.
struct BarcodeRow
{
    int number;
    Symbology symbology;
    Paper::Code::Variant variant;
    bool hasMarks;  ///< of code sets
};

constexpr BarcodeRow barcodes[] = {
    {0, Symbology::UpcA, Paper::Code::Usual, false},
    {1, Symbology::UpcE, Paper::Code::Usual, false},
    {2, Symbology::Ean13, Paper::Code::Usual, false},
    {3, Symbology::Ean8, Paper::Code::Usual, false},
    {4, Symbology::Code39, Paper::Code::Usual, false},
    {5, Symbology::Itf, Paper::Code::Usual, false},
    {6, Symbology::Codabar, Paper::Code::Usual, false},
    {72, Symbology::Code93, Paper::Code::Usual, false},
    {73, Symbology::Code128, Paper::Code::Usual, true},
    {74, Symbology::Gs1_128, Paper::Code::Usual, true},
    {75, Symbology::GS1DataBar, Paper::Code::Usual, false},
    {76, Symbology::GS1DataBar, Paper::Code::Usual, false},
    {77, Symbology::GS1DataBar, Paper::Code::Limited, false},
    {78, Symbology::GS1DataBar, Paper::Code::Expanded, true},
    {79, Symbology::Code128, Paper::Code::Usual, false},
};

constexpr int firstCounted = 65;  // 65 to 71 are 0 to 6, with their length

void printBarcode(Printer &printer, const StreamCommand &command)
{
    int number = command.operand(0);
    QByteArray sent = command.payload();
    if (number < firstCounted && sent.endsWith('\0'))
        sent.chop(1);
    if (number >= firstCounted && number <= firstCounted + 6)
        number -= firstCounted;
    const auto *const row = std::find_if(std::begin(barcodes), std::end(barcodes),
                                         [number](const auto &r) { return r.number == number; });
    if (row == std::end(barcodes))
        return;
    printer.endLineFor(command);
    Paper::Code code;
    code.symbology = row->symbology;
    code.variant = row->variant;
    // The payload shares the command's bytes, which go.
    code.sent = QByteArray(sent.constData(), sent.size());
    code.payload = barcodePayload(row->symbology, code.sent, row->hasMarks);
    code.module = {printer.state.barcode.width, printer.state.barcode.height};
    printer.printCode(code, printer.state.barcode);
}

void setBarcodeHeight(Printer &printer, const StreamCommand &command)
{
    if (command.operand(0) > 0)
        printer.state.barcode.height = command.operand(0);
}

// 68 to 76 are halves on printers that have them, and the next whole number on those of 203 dpi.
void setBarcodeWidth(Printer &printer, const StreamCommand &command)
{
    const int width = command.operand(0);
    if (width >= 1 && width <= 6)
        printer.state.barcode.width = width;
    else if (width >= 68 && width <= 76)
        printer.state.barcode.width = std::max(1, (width - 66) / 2);
    else
        printer.noteFor(command, QStringLiteral("has no width %1").arg(width));
}

void setBarcodeTextPosition(Printer &printer, const StreamCommand &command)
{
    const int position = choiceOf(command, 0, 4);
    if (position >= 0)
        printer.state.barcode.textPosition = position;
}

void setBarcodeTextFont(Printer &printer, const StreamCommand &command)
{
    const int font = choiceOf(command, 0, printer.profile.fontCells().size());
    if (font >= 0)
        printer.state.barcode.textFont = font;
}

constexpr HandlerRow barcodeRows[] = {
    {CommandId::Barcode, printBarcode},
    {CommandId::BarcodeHeight, setBarcodeHeight},
    {CommandId::BarcodeWidth, setBarcodeWidth},
    {CommandId::BarcodeTextPosition, setBarcodeTextPosition},
    {CommandId::BarcodeTextFont, setBarcodeTextFont},
};

}  // namespace

HandlerRows barcodeHandlers()
{
    return {std::begin(barcodeRows), std::end(barcodeRows)};
}

}  // namespace printerslib::drivers
