#include <algorithm>

#include "encoder/documentwriter_p.h"
#include "encoder/drawncodes_p.h"

namespace printerslib::drivers {

namespace {

using Id = CommandId;
using Symbology = Paper::Symbology;

constexpr int starUnits = 255;     ///< most of ESC I, each a dot
constexpr int narrowSpacing = 24;  ///< dots of 3 mm
constexpr int wideSpacing = 32;    ///< of 4 mm

/// A barcode by the number of ESC b, and what is added to the dots of a module for its mode. Of
/// codes with wide and narrow bars the modes are those in which wide ones have three modules.
struct StarCode
{
    Symbology symbology;
    int number;
    int modeBeyondModule;
};

constexpr StarCode starCodes[] = {
    {Symbology::UpcE, 0, -1},    {Symbology::UpcA, 1, -1},   {Symbology::Ean8, 2, -1},
    {Symbology::Ean13, 3, -1},   {Symbology::Code39, 4, -1}, {Symbology::Itf, 5, 5},
    {Symbology::Code128, 6, -1}, {Symbology::Code93, 7, -1}, {Symbology::Codabar, 8, -1},
};

class StarWriter final : public DocumentWriter
{
public:
    StarWriter(const PrintTarget &target, const PrintOptions &options, EncodedDocument &document)
        : DocumentWriter(target, options, document)
    {}

    void begin(bool resets) override;
    // At once: what has to be at the cutter was fed there.
    void cut() override { commands().put(Id::StarCut, '0'); }
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
    void setEveryState();
    void chooseSpacing(int dots);
    void printBand(const PrintDots &dots, int top);
    void printRows(const QByteArray &rows, int bytesPerRow);
    void printBarcode(const Paper::Code &code);
    void printQrCode(const Paper::Code &code);

    int m_spacing = 0;  ///< dots of a line feed; 0: not set
};

void StarWriter::begin(bool resets)
{
    if (resets)
        commands().put(Id::Initialize);
    else
        setEveryState();
    commands().put(Id::Font, '0' + baseFont());
    setPlain(baseFont());
    choosePage(firstPage());
    chooseSpacing(narrowSpacing);
}

void StarWriter::setEveryState()
{
    commands().put(Id::CharacterScale, '0', '0');
    for (const Id id : {Id::BoldOff, Id::InverseOff, Id::UpsideDownOff})
        commands().put(id);
    for (const Id id :
         {Id::Underline, Id::Upperline, Id::Rotation, Id::CharacterSpacing, Id::InternationalSet,
          Id::UserCharactersUsed, Id::Alignment, Id::LeftMargin})
        commands().put(id, 0);
    const QSize cell = profile().fontCells().value(0);
    commands().put(Id::Font, '0');
    commands().put(Id::RightMargin, profile().headDots() / cell.width());
}

/// Lines of 3 or of 4 mm. What ESC I feeds less than that isn't printed at all.
void StarWriter::chooseSpacing(int dots)
{
    if (dots == m_spacing)
        return;
    commands().put(Id::LineSpacingChoice, dots == narrowSpacing ? 0 : 1);
    m_spacing = dots;
}

void StarWriter::chooseStyle(const TextStyle &wanted)
{
    const TextStyle &now = style();
    if (wanted.font != now.font)
        commands().put(Id::Font, '0' + wanted.font);
    if (wanted.widthScale != now.widthScale || wanted.heightScale != now.heightScale)
        commands().put(Id::CharacterScale, '0' + wanted.heightScale - 1,
                       '0' + wanted.widthScale - 1);
    if (wanted.isBold != now.isBold)
        commands().put(wanted.isBold ? Id::BoldOn : Id::BoldOff);
    if (wanted.isUnderlined != now.isUnderlined)
        commands().put(Id::Underline, wanted.isUnderlined ? 1 : 0);
    if (wanted.isInverse != now.isInverse)
        commands().put(wanted.isInverse ? Id::InverseOn : Id::InverseOff);
}

void StarWriter::defineOwn(int code, const Paper::Picture &drawing)
{
    constexpr int size = 48;
    commands().put(Id::DefineCharacter, code);
    commands().putData(columnsOf24(placedDots(drawing, 0), 0).leftJustified(size, '\0', true));
}

void StarWriter::endLine(int height, int pitch, bool isBlank)
{
    const int spacing = pitch < wideSpacing ? narrowSpacing : wideSpacing;
    chooseSpacing(spacing);
    if (pitch == spacing && height <= narrowSpacing) {
        commands().put(Id::LineFeed);
        return;
    }
    // A line without anything in it is a line still, and no mere feed.
    if (isBlank) {
        choosePlain();
        commands().putText(" ", 1);
    }
    const int first = std::clamp(pitch, 1, starUnits);
    commands().put(Id::FeedHalfUnits, first);
    feedDots(pitch - std::max(first, height));
}

void StarWriter::feedDots(int dots)
{
    while (dots > 0) {
        const int part = std::min(dots, starUnits);
        commands().put(Id::FeedHalfUnits, part);
        dots -= part;
    }
}

int StarWriter::printDots(const PrintDots &dots, int /*room*/)
{
    chooseSpacing(narrowSpacing);
    int y = 0;
    for (; y < dots.height; y += bandRows)
        printBand(dots, y);
    return y;
}

void StarWriter::printBand(const PrintDots &dots, int top)
{
    const int size = bandRows * dots.bytesPerRow;
    const hazards::Parts parts = hazards::partsOf(
        dots.rows.mid(top * dots.bytesPerRow, size).leftJustified(size, '\0'), rules());
    printRows(parts.first, dots.bytesPerRow);
    if (!parts.second.isEmpty()) {
        commands().put(Id::AbsolutePosition, 0, 0);
        printRows(parts.second, dots.bytesPerRow);
    }
    commands().put(Id::FeedHalfUnits, bandRows);
}

/// A band in as few commands side by side as may be.
void StarWriter::printRows(const QByteArray &rows, int bytesPerRow)
{
    constexpr int most = 2040 / bandRows;
    for (int first = 0; first < bytesPerRow; first += most) {
        const int part = std::min(bytesPerRow - first, most);
        commands().put(Id::FineRasterImage, part, 0);
        for (int y = 0; y < bandRows; ++y)
            commands().putText(rows.constData() + qptrdiff(y) * bytesPerRow + first, part);
    }
}

void StarWriter::printColumns(const QByteArray &columns, int first, int count)
{
    commands().put(Id::FineBitImage, lowByte(count), highByte(count));
    commands().putText(columns.constData() + qptrdiff(3) * first, 3 * count);
}

/// The layout puts it where one of the alignments does.
void StarWriter::printDrawn(const Paper::Code &code, int left)
{
    const int free = target().lineDots() - code.modules.width() * code.module.width();
    const int alignment = left == 0 ? 0 : left == free ? 2 : 1;
    if (alignment != 0)
        commands().put(Id::Alignment, '0' + alignment);
    if (code.symbology == Symbology::QrCode)
        printQrCode(code);
    else
        printBarcode(code);
    if (alignment != 0)
        commands().put(Id::Alignment, '0');
}

void StarWriter::printBarcode(const Paper::Code &code)
{
    constexpr char end = '\x1E';
    const auto *const row =
        std::find_if(std::begin(starCodes), std::end(starCodes),
                     [&code](const auto &r) { return r.symbology == code.symbology; });
    if (row == std::end(starCodes))
        return;
    // 3: neither digits nor a line feed.
    commands().put(Id::StarBarcode, '0' + row->number, '3',
                   '0' + code.module.width() + row->modeBeyondModule, code.module.height());
    commands().putData(code.payload);
    commands().putText(&end, 1);
}

void StarWriter::printQrCode(const Paper::Code &code)
{
    constexpr int modelTwo = 2;
    const int size = code.payload.size();
    commands().put(Id::QrModel, modelTwo);
    commands().put(Id::QrLevel, drawncodes::numberOfLevel(code));
    commands().put(Id::QrModuleSize, code.module.width());
    commands().put(Id::QrStore, 0, lowByte(size), highByte(size));
    commands().putData(code.payload);
    commands().put(Id::QrPrint);
}

/// The first drawer's pulse is set, then given; that of the second is as it is.
void StarWriter::openDrawer(int pin, int on, int off)
{
    constexpr int unit = 10;  // milliseconds
    constexpr int most = 127;
    if (pin != 2) {
        commands().put(Id::Drawer2);
        return;
    }
    const int first = pulseUnits(on, unit, 1, most);
    commands().put(Id::DrawerPulse, first, pulseUnits(off, unit, 1, most));
    commands().put(Id::Drawer1);
}

}  // namespace

std::unique_ptr<DocumentWriter> starLineWriter(const PrintTarget &target,
                                               const PrintOptions &options,
                                               EncodedDocument &document)
{
    return std::make_unique<StarWriter>(target, options, document);
}

}  // namespace printerslib::drivers
