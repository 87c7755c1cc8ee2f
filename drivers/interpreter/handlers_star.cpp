#include "interpreter/handlers_star_p.h"

#include <algorithm>
#include <iterator>

#include "interpreter/barcodedata_p.h"
#include "interpreter/dots_p.h"
#include "interpreter/handlers_mechanics_p.h"
#include "interpreter/handlers_p.h"
#include "interpreter/handlers_symbols_p.h"

namespace printerslib::drivers {

void openStarDrawer(Printer &printer, int pin)
{
    constexpr int firstPin = 2;
    const QSize pulse = pin == firstPin ? printer.drawerPulse : usualDrawerPulse;
    addPulse(printer, pin, pulse.width(), pulse.height());
}

namespace {

using Event = Paper::Event;
using Symbology = Paper::Symbology;

constexpr int dotsPerMillimetre = 8;

// Characters

void setScale(Printer &printer, const StreamCommand &command)
{
    const int height = choiceOf(command, 0, 6);
    const int width = choiceOf(command, 1, 6);
    if (height < 0 || width < 0)
        return;
    printer.state.heightScale = height + 1;
    printer.state.widthScale = width + 1;
}

template <auto member>
void setOneScale(Printer &printer, const StreamCommand &command)
{
    const int scale = choiceOf(command, 0, 6);
    if (scale >= 0)
        printer.state.*member = scale + 1;
}

// Upside down counts for the line, as it does with ESC/POS.
template <bool value>
void setStarUpsideDown(Printer &printer, const StreamCommand &command)
{
    if (printer.isAtLineStart(command))
        printer.state.isUpsideDown = value;
}

void setStarFont(Printer &printer, const StreamCommand &command)
{
    const int font = choiceOf(command, 0, printer.profile.fontCells().size());
    printer.state.pitch = 0;
    if (font >= 0)
        printer.state.font = font;
    else
        printer.noteFor(
            command,
            QStringLiteral("asks for font %1, which the model hasn't").arg(command.operand(0)));
}

void setRotation(Printer &printer, const StreamCommand &command)
{
    const int choice = choiceOf(command, 0, 4);
    if (choice >= 0)
        printer.state.isTurned = choice % 2 != 0;
}

void noteUpperline(Printer &printer, const StreamCommand &command)
{
    if (isSwitchedOn(command))
        printer.noteFor(command, QStringLiteral("asks for a line above, which isn't drawn"));
}

void defineStarCharacter(Printer &printer, const StreamCommand &command)
{
    // Sixteen columns of three bytes, of which the font takes what it has.
    const Paper::Picture drawn = pictureOfColumns(command.payload(), 16, 3);
    printer.defineCharacter(printer.ownKey(command.operand(2)), drawn, printer.cellSize());
}

void cancelStarCharacter(Printer &printer, const StreamCommand &command)
{
    printer.ownCharacters.remove(printer.ownKey(command.operand(2)));
}

/// Underlines have two dots.
void setStarUnderline(Printer &printer, const StreamCommand &command)
{
    constexpr int dots = 2;
    const int choice = choiceOf(command, 0, 2);
    if (choice >= 0)
        printer.state.underline = dots * choice;
}

/// Dots, also as digits from '0' on.
int starDots(const StreamCommand &command, int index)
{
    const int value = command.operand(index);
    return value >= '0' ? value - '0' : value;
}

void setStarSpacingBeside(Printer &printer, const StreamCommand &command)
{
    printer.state.spacing = starDots(command, 0);
}

void setStarKanjiSpacing(Printer &printer, const StreamCommand &command)
{
    printer.state.kanji.spacingLeft = starDots(command, 0);
    printer.state.kanji.spacingRight = starDots(command, 1);
}

// Lines

void cancelAndReset(Printer &printer, const StreamCommand &command)
{
    printer.dropLine(command);
    printer.reset();
}

/// Without stops of its own, each line is one.
void goToVerticalTab(Printer &printer, const StreamCommand & /*command*/)
{
    printer.printLine(1);
}

/// In characters of the chosen font.
void setMargins(Printer &printer, int left, int right)
{
    printer.state.leftMargin = std::clamp(left, 0, printer.paperDots);
    printer.state.areaWidth =
        std::clamp(right, printer.state.leftMargin, printer.paperDots) - printer.state.leftMargin;
}

void setLeftCharacters(Printer &printer, const StreamCommand &command)
{
    const int right = printer.state.leftMargin + printer.state.areaWidth;
    if (printer.isAtLineStart(command))
        setMargins(printer, command.operand(0) * printer.columnWidth(), right);
}

void setRightCharacters(Printer &printer, const StreamCommand &command)
{
    if (printer.isAtLineStart(command) && command.operand(0) > 0)
        setMargins(printer, printer.state.leftMargin, command.operand(0) * printer.columnWidth());
}

template <int quarterMillimetres>
void setStarSpacing(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.lineSpacing = quarterMillimetres * dotsPerMillimetre / 4;
}

void chooseStarSpacing(Printer &printer, const StreamCommand &command)
{
    constexpr int narrow = 3;  // millimetres
    constexpr int wide = 4;
    printer.state.lineSpacing = dotsPerMillimetre * (isSwitchedOn(command) ? wide : narrow);
}

template <int unitsPerInch>
void setSpacingByUnits(Printer &printer, const StreamCommand &command)
{
    printer.state.lineSpacing =
        qRound(double(command.operand(0)) * printer.profile.dotsPerInch() / unitsPerInch);
}

void setSevenSeventySeconds(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.lineSpacing = qRound(7.0 * printer.profile.dotsPerInch() / 72);
}

void defineSpacing(Printer &printer, const StreamCommand &command)
{
    printer.state.definedSpacing =
        qRound(double(command.operand(0)) * printer.profile.dotsPerInch() / 72);
}

void useDefinedSpacing(Printer &printer, const StreamCommand & /*command*/)
{
    printer.state.lineSpacing = printer.state.definedSpacing;
}

/// A quarter of a millimetre is two dots.
template <int dotsPerUnit>
void feedStarUnits(Printer &printer, const StreamCommand &command)
{
    printer.printLineAndFeed(dotsPerUnit * command.operand(0));
}

// Bit images

template <int bytesPerColumn, int width, int height>
void addStarBitImage(Printer &printer, const StreamCommand &command)
{
    Paper::Picture picture = pictureOfColumns(command.payload(), command.word(0), bytesPerColumn);
    picture.dotsPerPixel = {width, height};
    printer.addToLine(picture);
}

void addFineRaster(Printer &printer, const StreamCommand &command)
{
    printer.addToLine(pictureOfRows(command.payload(), 8 * command.operand(0), 24));
}

/// m says how dark the dots are, and there's no scale.
void printStarRaster(Printer &printer, const StreamCommand &command)
{
    printer.endLineFor(command);
    printer.printPicture(pictureOfRows(command.payload(), 8 * command.word(1), command.word(3)));
}

void printNvImages(Printer &printer, const StreamCommand &command)
{
    printer.endLineFor(command);
    // Their dots are shared, but there may be many of them.
    const QVector<Paper::Picture> &pictures = printer.graphics.nvPictures;
    const qint64 size = qint64(sizeof(Paper::Picture) + sizeof(Paper::Line)) * pictures.size();
    if (!printer.mayCopy(size, QStringLiteral("a picture")))
        return;
    for (const Paper::Picture &picture : pictures)
        printer.printPicture(picture);
}

// Codes

struct StarBarcodeRow
{
    Symbology symbology;
    Paper::Code::Variant variant;
    bool hasMarks;  ///< of functions, such as {1
    /// Dots of a narrow module by the mode, from 1 on.
    int widths[9];
};

/// By n1. StarPRNT added what follows the first nine, with modules of so many dots as the mode
/// says.
constexpr StarBarcodeRow starBarcodes[] = {
    {Symbology::UpcE, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::UpcA, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Ean8, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Ean13, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Code39, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Itf, Paper::Code::Usual, false, {2, 4, 6, 2, 4, 6, 2, 3, 4}},
    {Symbology::Code128, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Code93, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Codabar, Paper::Code::Usual, false, {2, 3, 4, 2, 3, 4, 2, 3, 4}},
    {Symbology::Gs1_128, Paper::Code::Usual, true, {1, 2, 3, 4, 5, 6, 6, 6, 6}},
    {Symbology::GS1DataBar, Paper::Code::Usual, false, {1, 2, 3, 4, 5, 6, 6, 6, 6}},
    {Symbology::GS1DataBar, Paper::Code::Usual, false, {1, 2, 3, 4, 5, 6, 6, 6, 6}},
    {Symbology::GS1DataBar, Paper::Code::Limited, false, {1, 2, 3, 4, 5, 6, 6, 6, 6}},
    {Symbology::GS1DataBar, Paper::Code::Expanded, true, {1, 2, 3, 4, 5, 6, 6, 6, 6}},
};

/// n1: what, n2: digits and line feed, n3: width, n4: height; the data ends with RS.
void printStarBarcode(Printer &printer, const StreamCommand &command)
{
    const int number = choiceOf(command, 0, int(std::size(starBarcodes)));
    const int text = choiceOf(command, 1, 5);
    const int mode = choiceOf(command, 2, 10);
    if (number < 0 || text < 1 || mode < 1) {
        printer.noteFor(command, QStringLiteral("has no such kind, digits or width"));
        return;
    }
    printer.endLineFor(command);
    const StarBarcodeRow &row = starBarcodes[number];
    QByteArray sent = command.payload();
    if (sent.endsWith('\x1E'))
        sent.chop(1);
    Paper::Code code;
    code.symbology = row.symbology;
    code.variant = row.variant;
    code.sent = QByteArray(sent.constData(), sent.size());
    code.payload = barcodePayload(row.symbology, code.sent, row.hasMarks);
    code.module = {row.widths[mode - 1], std::max(1, command.operand(3))};
    BarcodeState barcode;
    barcode.textPosition = text % 2 == 0 ? 2 : 0;
    printer.printCode(code, barcode);
    if (text <= 2)
        printer.printLine(1);
}

void setStarQrModel(Printer &printer, const StreamCommand &command)
{
    printer.symbols[1].variant =
        choiceOf(command, 0, 3) == 1 ? Paper::Code::ModelOne : Paper::Code::Usual;
}

void setStarQrLevel(Printer &printer, const StreamCommand &command)
{
    const int level = choiceOf(command, 0, 4);
    if (level >= 0)
        printer.symbols[1].level = "LMQH"[level];
}

template <int family>
void setStarModuleSize(Printer &printer, const StreamCommand &command)
{
    if (command.operand(0) > 0)
        printer.symbols[family].moduleWidth = std::min(command.operand(0), 16);
}

template <int family>
void storeStarData(Printer &printer, const StreamCommand &command)
{
    const QByteArray data = command.payload();
    printer.symbols[family].data = QByteArray(data.constData(), data.size());
}

/// Parts of a type, a word and so many bytes: the bytes make up the data.
void storeStarParts(Printer &printer, const StreamCommand &command)
{
    const QByteArray parts = command.payload();
    QByteArray data;
    int at = 0;
    while (at + 3 <= parts.size()) {
        const int size = static_cast<unsigned char>(parts.at(at + 1)) +
                         256 * static_cast<unsigned char>(parts.at(at + 2));
        data += parts.mid(at + 3, size);
        at += 3 + size;
    }
    printer.symbols[1].data = data;
}

template <int family>
void printStarSymbol(Printer &printer, const StreamCommand &command)
{
    printSymbol(printer, command, family);
}

void setStarPdf417Shape(Printer &printer, const StreamCommand &command)
{
    if (choiceOf(command, 0, 2) == 1)
        printer.symbols[0].grid = {command.operand(2), command.operand(1)};
}

void setStarPdf417Level(Printer &printer, const StreamCommand &command)
{
    const int level = choiceOf(command, 0, 9);
    if (level >= 0)
        printer.symbols[0].level = static_cast<char>('0' + level);
}

void setStarPdf417Height(Printer &printer, const StreamCommand &command)
{
    printer.symbols[0].moduleHeight = std::clamp(command.operand(0), 1, 10);
}

// Cutter, drawers, buzzer

/// 0 and 1 cut where the paper is, 2 and 3 at the end of what is printed; the odd ones leave a
/// bridge.
void cutStar(Printer &printer, const StreamCommand &command)
{
    const int mode = choiceOf(command, 0, 4);
    if (mode < 0) {
        printer.noteFor(command, QStringLiteral("has no mode %1").arg(command.operand(0)));
        return;
    }
    printer.endLineFor(command);
    const int distance = mode < 2 ? printer.profile.dotsToCutter() : 0;
    printer.roll.cut(mode % 2 == 0 ? Event::Cut : Event::PartialCut, printer.roll.top() - distance);
}

template <int pin>
void openDrawerAt(Printer &printer, const StreamCommand & /*command*/)
{
    openStarDrawer(printer, pin);
}

void setDrawerPulse(Printer &printer, const StreamCommand &command)
{
    constexpr int unit = 10;  // milliseconds
    printer.drawerPulse = {unit * command.operand(0), unit * command.operand(1)};
}

/// ESC SYN n m: 0 takes back what the presenter holds, 1 sets when it does so by itself, 3 and 4
/// are its counters. It holds out what is cut without being told.
void movePresenter(Printer &printer, const StreamCommand &command)
{
    if (choiceOf(command, 0, 5) == 0)
        printer.roll.addEvent(Event::Retract, QStringLiteral("takes the ticket back"));
}

void deselectPrinter(Printer &printer, const StreamCommand &command)
{
    printer.isSelected = false;
    printer.noteFor(command, QStringLiteral("deselects the printer; what follows isn't printed"));
}

constexpr HandlerRow starRows[] = {
    {CommandId::CharacterScale, setScale},
    {CommandId::WidthScale, setOneScale<&PrintState::widthScale>},
    {CommandId::HeightScale, setOneScale<&PrintState::heightScale>},
    {CommandId::DoubleWidthOn, setState<&PrintState::widthScale, 2>},
    {CommandId::DoubleWidthOff, setState<&PrintState::widthScale, 1>},
    {CommandId::DoubleHeightOn, setState<&PrintState::heightScale, 2>},
    {CommandId::DoubleHeightOff, setState<&PrintState::heightScale, 1>},
    {CommandId::BoldOn, setState<&PrintState::isBold, true>},
    {CommandId::BoldOff, setState<&PrintState::isBold, false>},
    {CommandId::InverseOn, setState<&PrintState::isInverse, true>},
    {CommandId::InverseOff, setState<&PrintState::isInverse, false>},
    {CommandId::UpsideDownOn, setStarUpsideDown<true>},
    {CommandId::UpsideDownOff, setStarUpsideDown<false>},
    {CommandId::CharacterSpacing, setStarSpacingBeside},
    {CommandId::KanjiSpacing, setStarKanjiSpacing},
    {CommandId::Font, setStarFont},
    {CommandId::Pitch12, setState<&PrintState::pitch, 12>},
    {CommandId::Pitch14, setState<&PrintState::pitch, 14>},
    {CommandId::Pitch15, setState<&PrintState::pitch, 15>},
    {CommandId::Pitch16, setState<&PrintState::pitch, 16>},
    {CommandId::Rotation, setRotation},
    {CommandId::Underline, setStarUnderline},
    {CommandId::Upperline, noteUpperline},
    {CommandId::DefineCharacter, defineStarCharacter},
    {CommandId::CancelCharacter, cancelStarCharacter},
    {CommandId::CancelData, cancelAndReset},
    {CommandId::VerticalTab, goToVerticalTab},
    {CommandId::LeftMargin, setLeftCharacters},
    {CommandId::RightMargin, setRightCharacters},
    {CommandId::LineSpacingChoice, chooseStarSpacing},
    {CommandId::NarrowLineSpacing, setStarSpacing<12>},
    {CommandId::SevenSeventySecondsSpacing, setSevenSeventySeconds},
    {CommandId::DefineSpacing, defineSpacing},
    {CommandId::DefinedSpacing, useDefinedSpacing},
    {CommandId::LineSpacing, setSpacingByUnits<216>},
    {CommandId::LineSpacing144, setSpacingByUnits<144>},
    {CommandId::FeedUnits, feedStarUnits<2>},
    {CommandId::FeedHalfUnits, feedStarUnits<1>},
    {CommandId::CoarseBitImage, addStarBitImage<1, 3, 3>},
    {CommandId::WideBitImage, addStarBitImage<1, 1, 3>},
    {CommandId::FineBitImage, addStarBitImage<3, 1, 1>},
    {CommandId::FineRasterImage, addFineRaster},
    {CommandId::RasterImage, printStarRaster},
    {CommandId::PrintNvImages, printNvImages},
    {CommandId::StarBarcode, printStarBarcode},
    {CommandId::QrModel, setStarQrModel},
    {CommandId::QrLevel, setStarQrLevel},
    {CommandId::QrModuleSize, setStarModuleSize<1>},
    {CommandId::QrStore, storeStarData<1>},
    {CommandId::QrStoreParts, storeStarParts},
    {CommandId::QrPrint, printStarSymbol<1>},
    {CommandId::Pdf417Shape, setStarPdf417Shape},
    {CommandId::Pdf417Level, setStarPdf417Level},
    {CommandId::Pdf417Width, setStarModuleSize<0>},
    {CommandId::Pdf417Height, setStarPdf417Height},
    {CommandId::Pdf417Store, storeStarData<0>},
    {CommandId::Pdf417Print, printStarSymbol<0>},
    {CommandId::StarCut, cutStar},
    {CommandId::Drawer1, openDrawerAt<2>},
    {CommandId::Drawer2, openDrawerAt<5>},
    {CommandId::DrawerPulse, setDrawerPulse},
    {CommandId::BuzzerSound, beep},
    {CommandId::Presenter, movePresenter},
    {CommandId::PrinterDeselect, deselectPrinter},
};

}  // namespace

HandlerRows starHandlers()
{
    return {std::begin(starRows), std::end(starRows)};
}

}  // namespace printerslib::drivers
