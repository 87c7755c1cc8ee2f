#include <algorithm>

#include "interpreter/handlers_p.h"
#include "interpreter/handlers_symbols_p.h"

namespace printerslib::drivers {

namespace {

using Symbology = Paper::Symbology;

// GS ( k: pL pH cn fn and what belongs to the function.
constexpr int family = 2;
constexpr int firstOperand = 4;

SymbolState &symbolOf(Printer &printer, const StreamCommand &command)
{
    return printer.symbols[command.operand(family) - '0'];
}

void storeData(Printer &printer, const StreamCommand &command)
{
    const QByteArray data = command.payload();
    symbolOf(printer, command).data = QByteArray(data.constData(), data.size());
}

void setModuleSize(Printer &printer, const StreamCommand &command)
{
    const int size = command.operand(firstOperand);
    if (size >= 1 && size <= 16)
        symbolOf(printer, command).moduleWidth = size;
    else
        printer.noteFor(command, QStringLiteral("has no module of %1 dots").arg(size));
}

void setQrModel(Printer &printer, const StreamCommand &command)
{
    SymbolState &symbol = symbolOf(printer, command);
    const int model = command.operand(firstOperand);
    symbol.symbology = model == '3' ? Symbology::MicroQrCode : Symbology::QrCode;
    symbol.variant = model == '1' ? Paper::Code::ModelOne : Paper::Code::Usual;
}

void setQrLevel(Printer &printer, const StreamCommand &command)
{
    constexpr char levels[] = "LMQH";
    const int level = choiceOf(command, firstOperand, 4);
    if (level >= 0)
        symbolOf(printer, command).level = levels[level];
}

void setPdf417Columns(Printer &printer, const StreamCommand &command)
{
    symbolOf(printer, command).grid.setWidth(command.operand(firstOperand));
}

void setPdf417Rows(Printer &printer, const StreamCommand &command)
{
    symbolOf(printer, command).grid.setHeight(command.operand(firstOperand));
}

void setPdf417Height(Printer &printer, const StreamCommand &command)
{
    const int height = command.operand(firstOperand);
    if (height >= 2 && height <= 8)
        symbolOf(printer, command).moduleHeight = height;
}

/// By a level, or by the share of the data, which the drawer chooses from.
void setPdf417Level(Printer &printer, const StreamCommand &command)
{
    const int level = command.operand(firstOperand + 1);
    const bool isLevel = command.operand(firstOperand) == '0' && level >= '0' && level <= '8';
    symbolOf(printer, command).level = isLevel ? static_cast<char>(level) : '\0';
}

void setPdf417Options(Printer &printer, const StreamCommand &command)
{
    symbolOf(printer, command).variant =
        choiceOf(command, firstOperand, 2) == 1 ? Paper::Code::Compact : Paper::Code::Usual;
}

/// The kind is the first byte behind m.
void storeDataBar(Printer &printer, const StreamCommand &command)
{
    storeData(printer, command);
    SymbolState &symbol = symbolOf(printer, command);
    const int kind = command.operand(firstOperand + 1);
    symbol.variant = kind == 'H'   ? Paper::Code::Stacked
                     : kind == 'I' ? Paper::Code::StackedOmni
                                   : Paper::Code::ExpandedStacked;
}

void setAztecMode(Printer &printer, const StreamCommand &command)
{
    symbolOf(printer, command).variant =
        choiceOf(command, firstOperand, 2) == 1 ? Paper::Code::Compact : Paper::Code::Usual;
}

void setDataMatrixType(Printer &printer, const StreamCommand &command)
{
    symbolOf(printer, command).variant =
        choiceOf(command, firstOperand, 2) == 1 ? Paper::Code::Rectangular : Paper::Code::Usual;
}

struct SymbolRow
{
    int family;
    Symbology symbology;
};

constexpr SymbolRow symbolFamilies[] = {
    {0, Symbology::Pdf417},     {1, Symbology::QrCode}, {2, Symbology::MaxiCode},
    {3, Symbology::GS1DataBar}, {4, Symbology::Other},  {5, Symbology::Aztec},
    {6, Symbology::DataMatrix},
};

Symbology symbologyOfFamily(int number)
{
    const auto *const row = std::find_if(std::begin(symbolFamilies), std::end(symbolFamilies),
                                         [number](const auto &r) { return r.family == number; });
    return row == std::end(symbolFamilies) ? Symbology::Other : row->symbology;
}

void printStored(Printer &printer, const StreamCommand &command)
{
    printSymbol(printer, command, command.operand(family) - '0');
}

void ignoreSymbolSetting(Printer & /*printer*/, const StreamCommand & /*command*/) {}

constexpr HandlerRow symbolRows[] = {
    {CommandId::QrModel, setQrModel},
    {CommandId::QrModuleSize, setModuleSize},
    {CommandId::QrLevel, setQrLevel},
    {CommandId::QrStore, storeData},
    {CommandId::QrPrint, printStored},
    {CommandId::Pdf417Columns, setPdf417Columns},
    {CommandId::Pdf417Rows, setPdf417Rows},
    {CommandId::Pdf417Width, setModuleSize},
    {CommandId::Pdf417Height, setPdf417Height},
    {CommandId::Pdf417Level, setPdf417Level},
    {CommandId::Pdf417Options, setPdf417Options},
    {CommandId::Pdf417Store, storeData},
    {CommandId::Pdf417Print, printStored},
    {CommandId::MaxiCodeMode, ignoreSymbolSetting},
    {CommandId::MaxiCodeStore, storeData},
    {CommandId::MaxiCodePrint, printStored},
    {CommandId::DataBarWidth, setModuleSize},
    {CommandId::DataBarMaxWidth, ignoreSymbolSetting},
    {CommandId::DataBarStore, storeDataBar},
    {CommandId::DataBarPrint, printStored},
    {CommandId::CompositeWidth, setModuleSize},
    {CommandId::CompositeMaxWidth, ignoreSymbolSetting},
    {CommandId::CompositeFont, ignoreSymbolSetting},
    {CommandId::CompositeStore, storeData},
    {CommandId::CompositePrint, printStored},
    {CommandId::AztecMode, setAztecMode},
    {CommandId::AztecModuleSize, setModuleSize},
    {CommandId::AztecLevel, ignoreSymbolSetting},
    {CommandId::AztecStore, storeData},
    {CommandId::AztecPrint, printStored},
    {CommandId::DataMatrixType, setDataMatrixType},
    {CommandId::DataMatrixModuleSize, setModuleSize},
    {CommandId::DataMatrixStore, storeData},
    {CommandId::DataMatrixPrint, printStored},
};

}  // namespace

void printSymbol(Printer &printer, const StreamCommand &command, int number)
{
    const SymbolState symbol = printer.symbols.value(number);
    if (symbol.data.isEmpty()) {
        printer.noteFor(command, QStringLiteral("finds no data"));
        return;
    }
    printer.endLineFor(command);
    if (!printer.mayCopy(symbol.data.size(), QStringLiteral("a code")))
        return;
    Paper::Code code;
    code.symbology =
        symbol.symbology == Symbology::Other ? symbologyOfFamily(number) : symbol.symbology;
    code.variant = symbol.variant;
    code.payload = symbol.data;
    code.sent = symbol.data;
    code.correctionLevel = symbol.level;
    if (code.symbology == Symbology::QrCode && code.correctionLevel == 0)
        code.correctionLevel = 'L';
    const bool isRows = code.symbology == Symbology::Pdf417;
    code.module = {symbol.moduleWidth, symbol.moduleWidth * (isRows ? symbol.moduleHeight : 1)};
    code.grid = symbol.grid.expandedTo({0, 0});
    if (code.symbology == Symbology::MaxiCode)
        code.module = {1, 1};
    if (code.symbology == Symbology::Other)
        code.fault = QStringLiteral("composite symbols aren't drawn here");
    printer.printCode(code, BarcodeState());
}

HandlerRows symbolHandlers()
{
    return {std::begin(symbolRows), std::end(symbolRows)};
}

}  // namespace printerslib::drivers
