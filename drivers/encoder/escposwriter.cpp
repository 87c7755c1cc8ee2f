#include <algorithm>

#include "encoder/documentwriter_p.h"
#include "encoder/drawncodes_p.h"
#include "printerdocs/echarformat.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;
using Symbology = Paper::Symbology;

constexpr int mostUnits = 255;
// Of a command with all its operands.
constexpr int mostStripBytes = 2048;
constexpr int rasterHead = 8;

struct EscPosCode
{
    Symbology symbology;
    int number;  ///< of GS k, in the form that carries its length
};

constexpr EscPosCode escPosCodes[] = {
    {Symbology::UpcA, 65},    {Symbology::UpcE, 66},   {Symbology::Ean13, 67},
    {Symbology::Ean8, 68},    {Symbology::Code39, 69}, {Symbology::Itf, 70},
    {Symbology::Codabar, 71}, {Symbology::Code93, 72}, {Symbology::Code128, 73},
};

class EscPosWriter final : public DocumentWriter
{
public:
    EscPosWriter(const PrintTarget &target, const PrintOptions &options, EncodedDocument &document)
        : DocumentWriter(target, options, document)
    {}

    void begin(bool resets) override;
    void cut() override;
    void openDrawer(int pin, int on, int off) override;

protected:
    void chooseStyle(const TextStyle &style) override;
    void choosePage(int page) override { commands().put(Id::CodePage, page); }
    void chooseOwn(bool isOwn) override { commands().put(Id::UserCharactersUsed, isOwn ? 1 : 0); }
    void defineOwn(int code, const Paper::Picture &drawing) override;
    void endLine(int height, int pitch, bool isBlank) override;
    int printDots(const PrintDots &dots, int room) override;
    void printColumns(const QByteArray &columns, int first, int count) override;
    void printDrawn(const Paper::Code &code, int left) override;
    void feedDots(int dots) override;

private:
    void chooseFont(int font);
    void switchItalics(bool isOn);
    void setEveryState();
    int feedUnitsPerInch() const { return profile().motionUnitsPerInch().height(); }
    int spacingUnitsPerInch() const;
    int acrossUnits(int dots) const;
    void switchRealTime(bool isOn);
    void printStrip(const PrintDots &dots, int top, int rows);
    int printStrips(const PrintDots &dots, int room);
    int printBands(const PrintDots &dots);
    void printBand(const PrintDots &dots, int top);
    void printOver(const QByteArray &columns);
    void printBarcode(const Paper::Code &code);
    void printQrCode(const Paper::Code &code);

    int m_spacing = -1;  ///< units of ESC 3; -1: not set
    int m_pitch = -1;    ///< dots of the last line
    int m_pitchUnits = 0;
};

void EscPosWriter::begin(bool resets)
{
    if (resets)
        commands().put(Id::Initialize);
    commands().put(Id::KanjiOff);
    if (!resets)
        setEveryState();
    chooseFont(baseFont());
    setPlain(baseFont());
    choosePage(firstPage());
}

/// What may be left over from somebody else.
void EscPosWriter::setEveryState()
{
    commands().put(Id::MotionUnits, 0, 0);
    commands().put(Id::PrintModes, 0);
    commands().put(Id::CharacterSize, 0);
    for (const Id id :
         {Id::Underline, Id::Bold, Id::DoubleStrike, Id::Inverse, Id::UpsideDown, Id::Turned,
          Id::Alignment, Id::CharacterSpacing, Id::InternationalSet, Id::UserCharactersUsed})
        commands().put(id, 0);
    if ((target().printedFormats() & CharItalic) != 0)
        switchItalics(false);
    commands().put(Id::LeftMargin, 0, 0);
    const int width = acrossUnits(profile().headDots());
    commands().put(Id::AreaWidth, lowByte(width), highByte(width));
}

/// Custom's printers have three fonts, of which the pitch makes two A and B.
void EscPosWriter::chooseFont(int font)
{
    if (profile().fontCells().size() < 2)
        return;
    if (profile().vendor() == Vendor::Custom) {
        commands().put(Id::CharactersPerInch, font > 1 ? 1 : 0);
        commands().put(Id::Font, font > 0 ? 1 : 0);
        return;
    }
    commands().put(Id::Font, font);
}

void EscPosWriter::switchItalics(bool isOn)
{
    if (profile().vendor() == Vendor::Custom)
        commands().put(Id::Italic, isOn ? 1 : 0);
    else
        commands().put(isOn ? Id::ItalicOn : Id::ItalicOff);
}

void EscPosWriter::chooseStyle(const TextStyle &wanted)
{
    const TextStyle &now = style();
    if (wanted.font != now.font)
        chooseFont(wanted.font);
    if (wanted.widthScale != now.widthScale || wanted.heightScale != now.heightScale)
        commands().put(Id::CharacterSize, (wanted.widthScale - 1) << 4 | (wanted.heightScale - 1));
    if (wanted.isBold != now.isBold)
        commands().put(Id::Bold, wanted.isBold ? 1 : 0);
    if (wanted.isUnderlined != now.isUnderlined)
        commands().put(Id::Underline, wanted.isUnderlined ? 2 : 0);
    if (wanted.isInverse != now.isInverse)
        commands().put(Id::Inverse, wanted.isInverse ? 1 : 0);
    if (wanted.isItalic != now.isItalic)
        switchItalics(wanted.isItalic);
}

void EscPosWriter::defineOwn(int code, const Paper::Picture &drawing)
{
    const QByteArray columns = columnsOf24(placedDots(drawing, 0), 0);
    const int width = drawing.size.width();
    QByteArray data(1, static_cast<char>(width));
    data += columns.leftJustified(3 * width, '\0', true);
    const bool isHazard = hazards::hasAny(data, rules());
    if (isHazard)
        switchRealTime(false);
    commands().put(Id::DefineCharacters, 3, code, code);
    commands().putData(data);
    if (isHazard)
        switchRealTime(true);
}

int EscPosWriter::spacingUnitsPerInch() const
{
    const int own = profile().lineSpacingUnitsPerInch();
    return own > 0 ? own : feedUnitsPerInch();
}

int EscPosWriter::acrossUnits(int dots) const
{
    return unitsOf(dots, profile().motionUnitsPerInch().width(), profile().dotsPerInch());
}

void EscPosWriter::endLine(int height, int pitch, bool isBlank)
{
    if (pitch != m_pitch)
        m_pitchUnits = unitsOf(pitch, spacingUnitsPerInch(), profile().dotsPerInch());
    m_pitch = pitch;
    const int units = m_pitchUnits;
    if (units >= 0 && units <= mostUnits && (pitch >= height || isBlank)) {
        if (units != m_spacing)
            commands().put(Id::LineSpacing, units);
        m_spacing = units;
        commands().put(Id::LineFeed);
        return;
    }
    const int most = dotsOfUnits(mostUnits, feedUnitsPerInch(), profile().dotsPerInch()) / 2;
    const int first = std::clamp(pitch, 0, most);
    commands().put(Id::FeedUnits, unitsOf(first, feedUnitsPerInch(), profile().dotsPerInch()));
    feedDots(pitch - (isBlank ? first : std::max(first, height)));
}

void EscPosWriter::feedDots(int dots)
{
    const int most = dotsOfUnits(mostUnits, feedUnitsPerInch(), profile().dotsPerInch()) - 1;
    while (dots > 0) {
        const int part = std::min(dots, std::max(1, most));
        commands().put(Id::FeedUnits, unitsOf(part, feedUnitsPerInch(), profile().dotsPerInch()));
        dots -= part;
    }
}

// The state after power-on: pulses act, the power-off doesn't.
void EscPosWriter::switchRealTime(bool isOn)
{
    if (!rules().switchesRealTime)
        return;
    constexpr int size = 5;
    constexpr char off[] = "\x01\x00\x02\x00";
    constexpr char on[] = "\x01\x01\x02\x00";
    commands().put(Id::RealTimeSwitch, size, 0);
    commands().putText(isOn ? on : off, size - 1);
}

int EscPosWriter::printDots(const PrintDots &dots, int room)
{
    return profile().rasterCommand() == RasterCommand::RasterBlock ? printStrips(dots, room)
                                                                   : printBands(dots);
}

void EscPosWriter::printStrip(const PrintDots &dots, int top, int rows)
{
    commands().put(Id::RasterImage, 0, lowByte(dots.bytesPerRow), highByte(dots.bytesPerRow),
                   lowByte(rows), highByte(rows));
    commands().putText(dots.rows.constData() + qptrdiff(top) * dots.bytesPerRow,
                       rows * dots.bytesPerRow);
}

/// Rows as far as they may go side by side; bands of columns where they may not.
int EscPosWriter::printStrips(const PrintDots &dots, int room)
{
    const int most = std::clamp((mostStripBytes - rasterHead) / dots.bytesPerRow, 1, 255);
    const bool isHazard = hazards::hasAny(dots.rows, rules());
    std::vector<int> bands;
    if (isHazard) {
        switchRealTime(false);
        bands = hazards::bandsFor(hazards::rowsWithin(dots, rules()), dots.height + room);
    }
    bands.push_back(dots.height);
    size_t band = 0;
    int y = 0;
    while (y < dots.height) {
        if (y == bands[band]) {
            printBand(dots, y);
            y += bandRows;
            ++band;
            continue;
        }
        int end = y + 1;
        while (end < std::min(bands[band], y + most) &&
               !(isHazard && hazards::standsBetween(dots, end - 1, rules())))
            ++end;
        printStrip(dots, y, end - y);
        y = end;
    }
    if (isHazard)
        switchRealTime(true);
    return y;
}

int EscPosWriter::printBands(const PrintDots &dots)
{
    int y = 0;
    for (; y < dots.height; y += bandRows)
        printBand(dots, y);
    return y;
}

/// 24 rows as columns of three bytes. What mustn't stand side by side is printed one over the
/// other.
void EscPosWriter::printBand(const PrintDots &dots, int top)
{
    const hazards::Parts parts = hazards::partsOf(columnsOf24(dots, top), rules());
    // Bytes of rows may reach beyond the line; columns end where anything is black.
    int end = parts.first.size();
    while (end > 0 && parts.first.at(end - 1) == '\0')
        --end;
    printColumns(parts.first, 0, (end + 2) / 3);
    if (!parts.second.isEmpty())
        printOver(parts.second);
    commands().put(Id::FeedUnits, unitsOf(bandRows, feedUnitsPerInch(), profile().dotsPerInch()));
}

void EscPosWriter::printColumns(const QByteArray &columns, int first, int count)
{
    constexpr int head = 5;
    constexpr int fineMode = 33;
    constexpr int most = (mostStripBytes - head) / 3;
    for (int part = 0; count > 0; count -= part, first += part) {
        part = std::min(count, most);
        commands().put(Id::BitImage, fineMode, lowByte(part), highByte(part));
        commands().putText(columns.constData() + qptrdiff(3) * first, 3 * part);
    }
}

/// Columns of a second part, from the first that isn't blank to the last.
void EscPosWriter::printOver(const QByteArray &columns)
{
    int first = 0;
    int end = columns.size();
    while (columns.at(first) == '\0')
        ++first;
    while (columns.at(end - 1) == '\0')
        --end;
    first /= 3;
    const int place = acrossUnits(first);
    commands().put(Id::AbsolutePosition, lowByte(place), highByte(place));
    printColumns(columns, first, (end + 2) / 3 - first);
}

void EscPosWriter::printDrawn(const Paper::Code &code, int left)
{
    const int margin = acrossUnits(left);
    if (left > 0)
        commands().put(Id::LeftMargin, lowByte(margin), highByte(margin));
    if (code.symbology == Symbology::QrCode)
        printQrCode(code);
    else
        printBarcode(code);
    if (left > 0)
        commands().put(Id::LeftMargin, 0, 0);
}

void EscPosWriter::printBarcode(const Paper::Code &code)
{
    const auto *const row =
        std::find_if(std::begin(escPosCodes), std::end(escPosCodes),
                     [&code](const auto &r) { return r.symbology == code.symbology; });
    if (row == std::end(escPosCodes))
        return;
    const QByteArray data = drawncodes::dataOf(code, Dialect::EscPos);
    commands().put(Id::BarcodeTextPosition, 0);
    commands().put(Id::BarcodeHeight, code.module.height());
    commands().put(Id::BarcodeWidth, code.module.width());
    commands().putChosen(Id::Barcode, row->number, data.size());
    commands().putData(data);
}

void EscPosWriter::printQrCode(const Paper::Code &code)
{
    constexpr int modelTwo = '2';
    const int size = code.payload.size() + 3;
    commands().put(Id::QrModel, 4, 0, modelTwo, 0);
    commands().put(Id::QrModuleSize, 3, 0, code.module.width());
    commands().put(Id::QrLevel, 3, 0, '0' + drawncodes::numberOfLevel(code));
    commands().put(Id::QrStore, lowByte(size), highByte(size), '0');
    commands().putData(code.payload);
    commands().put(Id::QrPrint, 3, 0, '0');
}

void EscPosWriter::cut()
{
    if (profile().cutCommand() == CutCommand::EscI)
        commands().put(commands().has(Id::FullCut) ? Id::FullCut : Id::PartialCut);
    else
        commands().put(Id::CutPaper, profile().cutCommand() == CutCommand::GsV ? 0 : 1);
}

void EscPosWriter::openDrawer(int pin, int on, int off)
{
    constexpr int unit = 2;  // milliseconds
    const int first = pulseUnits(on, unit, 1, mostUnits);
    int second = pulseUnits(off, unit, first, mostUnits);
    // No pair of times is to begin a command that acts at once.
    if (first == 0x10 && second == 0x14)
        ++second;
    commands().put(Id::Pulse, pin == 2 ? 0 : 1, first, second);
}

}  // namespace

std::unique_ptr<DocumentWriter> escPosWriter(const PrintTarget &target, const PrintOptions &options,
                                             EncodedDocument &document)
{
    return std::make_unique<EscPosWriter>(target, options, document);
}

}  // namespace printerslib::drivers
