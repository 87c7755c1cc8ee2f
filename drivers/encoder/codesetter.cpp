#include "encoder/codesetter_p.h"

#include <algorithm>
#include <optional>

#include "encoder/drawncodes_p.h"

namespace printerslib::drivers {

using Symbology = Paper::Symbology;

namespace {

/// A number that a barcode block may carry.
struct SymbologyRow
{
    int number;
    Symbology symbology;
    Paper::Code::Variant variant = Paper::Code::Usual;
};

// The small numbers are those of Star's ESC b, with the 7 that BBCode writes; the large ones those
// of GS k m.
constexpr SymbologyRow symbologies[] = {
    {1, Symbology::UpcE},
    {2, Symbology::UpcA},
    {3, Symbology::Ean8},
    {4, Symbology::Ean13},
    {5, Symbology::Code39},
    {6, Symbology::Itf},
    {DocumentBlock::BarcodeBbCode, Symbology::Code128},
    {8, Symbology::Code93},
    {9, Symbology::Codabar},
    {10, Symbology::Gs1_128},
    {11, Symbology::GS1DataBar},
    {12, Symbology::GS1DataBar},
    {13, Symbology::GS1DataBar, Paper::Code::Limited},
    {14, Symbology::GS1DataBar, Paper::Code::Expanded},
    {65, Symbology::UpcA},
    {66, Symbology::UpcE},
    {67, Symbology::Ean13},
    {68, Symbology::Ean8},
    {69, Symbology::Code39},
    {70, Symbology::Itf},
    {71, Symbology::Codabar},
    {72, Symbology::Code93},
    {73, Symbology::Code128},
    {74, Symbology::Gs1_128},
    {75, Symbology::GS1DataBar},
    {76, Symbology::GS1DataBar},
    {77, Symbology::GS1DataBar, Paper::Code::Limited},
    {78, Symbology::GS1DataBar, Paper::Code::Expanded},
    {79, Symbology::Code128},
};

const SymbologyRow *rowOf(int number)
{
    const auto *const row =
        std::find_if(std::begin(symbologies), std::end(symbologies),
                     [number](const SymbologyRow &known) { return known.number == number; });
    return row == std::end(symbologies) ? nullptr : row;
}

/// The correction level that a QR code was drawn with, as its format information tells: the two
/// leftmost modules of the ninth row, masked.
char levelOf(const Paper::Code &code)
{
    constexpr int formatRow = 8;
    constexpr char levels[] = {'M', 'L', 'H', 'Q'};
    const int rowBytes = (code.modules.width() + 7) / 8;
    const int offset = formatRow * rowBytes;
    if (offset >= code.rows.size())
        return 0;
    const int masked = static_cast<unsigned char>(code.rows.at(offset)) >> 6;
    return levels[masked ^ 0b10];
}

}  // namespace

/// How a kind of code is printed; lengths in dots.
struct CodeSetter::Look
{
    const char *name;
    int quietModules;
    int barHeight;                       ///< 0: modules are square
    int feed;                            ///< above and below; 0: as the quiet zone
    std::initializer_list<int> modules;  ///< the larger first; a single dot isn't readable
};

CodeSetter::CodeSetter(LayoutSheet &sheet, const CodeDrawer &codes) : m_sheet(sheet), m_codes(codes)
{}

void CodeSetter::addBarcode(const DocumentBlock &block)
{
    static const Look look = {"Barcode", 10, 80, 8, {3, 2}};
    const int number = block.barCodeType();
    const SymbologyRow *const row = rowOf(number);
    Paper::Code code;
    code.payload = block.barcode();
    if (row == nullptr) {
        const QString cause = QStringLiteral("The symbology %1 isn't known").arg(number);
        m_sheet.addFault(QLatin1String(look.name), cause, code.payload);
        m_sheet.fail(QStringLiteral("the symbology %1 of a barcode isn't known").arg(number));
        return;
    }
    code.symbology = row->symbology;
    code.variant = row->variant;
    // Its digits go in pairs; printers leave an odd one out.
    if (code.symbology == Symbology::Itf && code.payload.size() % 2 != 0)
        code.payload.prepend('0');
    add(code, look, block.alignment());
}

void CodeSetter::addQrCode(const DocumentBlock &block)
{
    static const Look look = {"QR code", 4, 0, 0, {6, 5, 4, 3, 2}};
    Paper::Code code;
    code.symbology = Symbology::QrCode;
    code.payload = block.qrCode();
    add(code, look, block.alignment());
}

void CodeSetter::add(Paper::Code code, const Look &look, ETextAlignment alignment)
{
    m_codes.draw(code);
    const QString name = QLatin1String(look.name);
    if (!code.fault.isEmpty()) {
        m_sheet.addFault(name, code.fault, code.payload);
        return;
    }
    const int dots = moduleFor(code, look);
    code.module = QSize(dots, look.barHeight > 0 ? look.barHeight : dots);
    if (dots == 0 || code.modules.isEmpty()) {
        m_sheet.addFault(name, QStringLiteral("It doesn't fit the paper"), code.payload);
        return;
    }
    if (!m_sheet.hasRaster() && !isDrawnByPrinter(m_sheet.profile(), code)) {
        m_sheet.addFault(name, QStringLiteral("The model prints none"), code.payload);
        return;
    }
    if (code.symbology == Symbology::QrCode)
        code.correctionLevel = levelOf(code);
    PrintLayout::Row row;
    row.kind = PrintLayout::Row::Code;
    row.left = leftOf(code, look, alignment);
    row.height = code.modules.height() * code.module.height();
    row.first = m_sheet.layout().codes.size();
    const int feed = look.feed > 0 ? look.feed : look.quietModules * dots;
    m_sheet.layout().codes.append(code);
    m_sheet.addFeed(feed);
    m_sheet.addRow(row);
    m_sheet.addFeed(feed);
}

/// The largest module with which a code fits, of those with which the printer draws it if there are
/// any. 0: none.
int CodeSetter::moduleFor(Paper::Code code, const Look &look) const
{
    int best = 0;
    for (const int dots : look.modules) {
        if (!fits(code.modules.width(), look.quietModules, dots))
            continue;
        best = std::max(best, dots);
        code.module = QSize(dots, dots);
        if (isDrawnByPrinter(m_sheet.profile(), code))
            return dots;
    }
    return best;
}

/// Its bars fit the line, and with its quiet zones it fits the paper.
bool CodeSetter::fits(int modules, int quietModules, int dots) const
{
    return modules * dots <= m_sheet.target().lineDots() &&
           (modules + 2 * quietModules) * dots <= m_sheet.target().paperDots();
}

/// Codes that a Star printer draws stand where its alignment puts them; all others have their
/// quiet zones on the line as far as it goes.
int CodeSetter::leftOf(const Paper::Code &code, const Look &look, ETextAlignment alignment) const
{
    const int bars = code.modules.width() * code.module.width();
    const PrinterProfile &profile = m_sheet.profile();
    if (profile.dialect() == Dialect::StarLine && isDrawnByPrinter(profile, code))
        return m_sheet.leftOf(bars, alignment);
    const int quiet = 2 * look.quietModules * code.module.width();
    const int width = std::min(bars + quiet, m_sheet.target().lineDots());
    return m_sheet.leftOf(width, alignment) + (width - bars) / 2;
}

}  // namespace printerslib::drivers
